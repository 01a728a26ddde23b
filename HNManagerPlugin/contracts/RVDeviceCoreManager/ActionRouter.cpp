#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ActionRouter.h"

const ActionRouterObject ActionRouter;

bool ManagerEvent::selectManagerItem(std::int64_t index) {
    const auto delegate = delegate_.lock();
    if (!delegate)
        return false;
    delegate->strategyWillSelectManagerItem(index);
    return true;
}

ManagerEvent &ActionRouterObject::managerEvent() const {
    static auto *event = new ManagerEvent;
    return *event;
}

ToolBarEvent &ActionRouterObject::toolBarEvent() const {
    static auto *event = new ToolBarEvent;
    return *event;
}

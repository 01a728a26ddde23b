// Events between the host and the plug-in: which category the host wants shown, and whether its tool bar stands on the
// plug-in. Main thread.
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/NSObject.h"

// Who follows the host's choice of a category.
class RStrategyManagerDelegate {
public:
    virtual ~RStrategyManagerDelegate() = default;
    // 0 to 9, the categories in their fixed outer order; anything else has no effect.
    virtual void strategyWillSelectManagerItem(std::int64_t index) = 0;
};

class ManagerEvent {
public:
    // Held weakly, through the object that implements it.
    void setDelegate(const std::shared_ptr<RStrategyManagerDelegate> &delegate) { delegate_ = delegate; }
    // The host's side: tells the delegate. False where nobody listens.
    bool selectManagerItem(std::int64_t index);

private:
    std::weak_ptr<RStrategyManagerDelegate> delegate_;
};

class ToolBarEvent {
public:
    // 1 while the host's tool bar stands on this plug-in; other values are the host's own.
    [[nodiscard]] std::int64_t selectItem() const { return selectItem_; }
    void setSelectItem(std::int64_t item) { selectItem_ = item; }

private:
    std::int64_t selectItem_ = 0;
};

class ActionRouterObject {
public:
    [[nodiscard]] ManagerEvent &managerEvent() const;
    [[nodiscard]] ToolBarEvent &toolBarEvent() const;
};
extern const ActionRouterObject ActionRouter;

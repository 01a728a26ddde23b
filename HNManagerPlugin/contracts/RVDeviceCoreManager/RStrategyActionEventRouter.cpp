#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"

RStrategyActionEventRouter &RStrategyActionEventRouter::shareInstance() {
    static auto *router = new RStrategyActionEventRouter;
    return *router;
}

void RStrategyActionEventRouter::install(std::shared_ptr<StrategyGates> gates) {
    gates_ = gates ? std::move(gates) : std::make_shared<StrategyGates>();
}

bool RStrategyActionEventRouter::needCloseiTunes() { return gates_->needCloseiTunes(); }
bool RStrategyActionEventRouter::actionRequestDiskSize(std::int64_t bytes) { return gates_->actionRequestDiskSize(bytes); }
bool RStrategyActionEventRouter::actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path) {
    return gates_->actionRequestDiskSize_withPath(bytes, path);
}
bool RStrategyActionEventRouter::actionRequestDeviceSize(std::int64_t bytes) { return gates_->actionRequestDeviceSize(bytes); }

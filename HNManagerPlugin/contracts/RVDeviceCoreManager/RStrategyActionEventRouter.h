// Gates that the host answers, with a dialog of its own where one is needed. A flow asks before it starts and gives up
// silently on the refusing answer. Main thread, except the disk questions (any).
#pragma once

#include <cstdint>
#include <memory>

#include "toolkit/NSString.h"

// What a host installs. The defaults let everything pass.
class StrategyGates {
public:
    virtual ~StrategyGates() = default;
    // True: the computer's media player has to be closed first, the flow ends at once.
    virtual bool needCloseiTunes() { return false; }
    // True when the computer's disk (or the volume of `path`) has that many bytes of room.
    virtual bool actionRequestDiskSize(std::int64_t) { return true; }
    virtual bool actionRequestDiskSize_withPath(std::int64_t, const NSString &) { return true; }
    // True when the device has that many bytes of room; 0 asks whether it can be written at all.
    virtual bool actionRequestDeviceSize(std::int64_t) { return true; }
};

class RStrategyActionEventRouter {
public:
    [[nodiscard]] static RStrategyActionEventRouter &shareInstance();
    // Null lets everything pass.
    void install(std::shared_ptr<StrategyGates> gates);

    bool needCloseiTunes();
    bool actionRequestDiskSize(std::int64_t bytes);
    bool actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path);
    bool actionRequestDeviceSize(std::int64_t bytes);

private:
    std::shared_ptr<StrategyGates> gates_ = std::make_shared<StrategyGates>();
};

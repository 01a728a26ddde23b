// The questions that a flow asks before it starts: room on the computer, room on the device, whether it can be written.
// Threads  as StrategyGates.
#pragma once

#include <functional>
#include <memory>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "device/AccessError.h"
#include "host/services/HostDeviceLayer.h"

namespace host {

class HostGates : public StrategyGates {
public:
    // Told why a question was answered with no; the flow itself then ends without a word.
    using Refused = std::function<void(device::AccessError::Kind kind, const std::string &reason)>;

    HostGates(std::shared_ptr<HostDeviceLayer> layer, Refused refused) : layer_(std::move(layer)), refused_(std::move(refused)) {}

    // Of the disk that the scratch folder lies on.
    bool actionRequestDiskSize(std::int64_t bytes) override;
    bool actionRequestDiskSize_withPath(std::int64_t bytes, const NSString &path) override;
    // False for a backup folder, for an image that another program is writing, and where the room does not suffice.
    bool actionRequestDeviceSize(std::int64_t bytes) override;

private:
    std::shared_ptr<HostDeviceLayer> layer_;
    Refused refused_;
};

}  // namespace host

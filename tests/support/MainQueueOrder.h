// The first rule of the house, told as a scenario that every host must play in the same order.
#pragma once

#include <functional>
#include <string>

// Queues the scenario, lets `runOuterLoop` serve the host's own loop until `finished` gives true, and gives the log.
[[nodiscard]] std::string playMainQueueOrder(const std::function<void(const std::function<bool()> &finished)> &runOuterLoop);
// What it must be.
extern const char *const kMainQueueOrder;

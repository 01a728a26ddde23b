#include "toolkit/dispatch/OperationQueue.h"

#include <memory>

namespace {

// Signals when the last operation that holds it has gone, run or dropped.
struct LastOneSignals {
    dispatch::Semaphore done{0};
    ~LastOneSignals() { done.signal(); }
};

}  // namespace

void NSOperationQueue::addOperations_waitUntilFinished(std::vector<dispatch::Block> blocks, bool wait) {
    auto last = std::make_shared<LastOneSignals>();
    dispatch::Semaphore done = last->done;
    for (dispatch::Block &block : blocks)
        addOperationWithBlock([block = std::move(block), last]() mutable { block(); });
    last = nullptr;
    if (wait)
        done.wait();
}

void NSOperationQueue::waitUntilAllOperationsAreFinished() {
    std::vector<dispatch::Block> marker;
    marker.emplace_back([] {});
    addOperations_waitUntilFinished(std::move(marker), true);
}

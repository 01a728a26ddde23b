// NSOperationQueue: blocks under a name, at most so many at a time.
#pragma once

#include <string>
#include <vector>

#include "toolkit/dispatch/Queue.h"

class NSOperationQueue {
public:
    explicit NSOperationQueue(std::string name = {}, int maxConcurrentOperationCount = 4)
        : name_(std::move(name)), queue_(dispatch::Queue::bounded(name_, maxConcurrentOperationCount)) {}
    [[nodiscard]] const std::string &name() const { return name_; }
    void addOperationWithBlock(dispatch::Block block) { dispatch::async(queue_, std::move(block)); }
    // In the order given; with `wait` the call returns when the last of them is done.
    void addOperations_waitUntilFinished(std::vector<dispatch::Block> blocks, bool wait);
    void waitUntilAllOperationsAreFinished();

private:
    std::string name_;
    dispatch::Queue queue_;
};

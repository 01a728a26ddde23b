#include "toolkit/services/NSLog.h"

#include <memory>
#include <mutex>

namespace {

struct Sink {
    std::mutex mutex;
    std::shared_ptr<std::function<void(const NSString &)>> write;
};

Sink &sharedSink() {
    static auto *sink = new Sink;
    return *sink;
}

}  // namespace

void setLogSink(std::function<void(const NSString &line)> sink) {
    const std::scoped_lock lock(sharedSink().mutex);
    sharedSink().write = sink ? std::make_shared<std::function<void(const NSString &)>>(std::move(sink)) : nullptr;
}

void writeLogLine(const NSString &line) {
    std::shared_ptr<std::function<void(const NSString &)>> write;
    {
        const std::scoped_lock lock(sharedSink().mutex);
        write = sharedSink().write;
    }
    if (write)
        (*write)(line);
}

#include "toolkit/dispatch/Guard.h"

#include <cstdio>
#include <mutex>
#include <string>

#include "toolkit/dispatch/Runtime.h"

namespace dispatch {

namespace {

std::mutex &sinkMutex() {
    static std::mutex mutex;
    return mutex;
}

FailureSink &sharedSink() {
    static FailureSink sink;
    return sink;
}

}  // namespace

void setFailureSink(FailureSink sink) {
    const std::scoped_lock lock(sinkMutex());
    sharedSink() = std::move(sink);
}

FailureSink failureSink() {
    const std::scoped_lock lock(sinkMutex());
    return sharedSink();
}

const char *reasonOf(const std::exception_ptr &failure) {
    thread_local std::string text;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &e) {
        text = e.what();
    } catch (...) {
        text = "an unknown failure";
    }
    return text.c_str();
}

void tellFailure(const char *what, std::exception_ptr failure) {
    if (const FailureSink sink = failureSink()) {
        try {
            sink(what, failure);
        } catch (...) {
            std::fprintf(stderr, "%s: the failure sink failed itself\n", what);
        }
        return;
    }
    std::fprintf(stderr, "%s: %s\n", what, reasonOf(failure));
}

bool guarded(const char *what, const std::function<void()> &body) {
    try {
        body();
        return true;
    } catch (const ThreadReleased &) {
        if (!isMain())
            throw;   // ends the worker, see Runtime
    } catch (...) {
        tellFailure(what, std::current_exception());
    }
    return false;
}

}  // namespace dispatch

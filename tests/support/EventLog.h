// What happened, word by word, in order: a flow is tested by its whole log.
// Threads: any thread adds; the test reads.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <utility>

class EventLog {
public:
    void add(std::string_view word) {
        const std::scoped_lock lock(mutex_);
        if (!text_.empty())
            text_ += '\n';
        text_ += word;
    }
    // All since the last take, one word a line.
    std::string take() {
        const std::scoped_lock lock(mutex_);
        return std::exchange(text_, {});
    }

private:
    std::mutex mutex_;
    std::string text_;
};

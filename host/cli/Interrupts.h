// Ctrl-C: the first one is told on the main queue, the second ends the program at once with 130.
// One at a time, made on the main thread.
#pragma once

#include <functional>
#include <thread>

namespace host::cli {

// Ctrl-C has come since the last Interrupts object was made. Any thread.
[[nodiscard]] bool isInterrupted();

class Interrupts {
public:
    explicit Interrupts(std::function<void()> first);
    ~Interrupts();
    Interrupts(const Interrupts &) = delete;

private:
    void run() const;
    std::function<void()> first_;
    std::thread thread_;
};

}  // namespace host::cli

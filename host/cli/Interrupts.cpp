#include "host/cli/Interrupts.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

#include "host/cli/Ending.h"
#include "toolkit/dispatch/Queue.h"

namespace host::cli {

namespace {

int wakeUp[2] = {-1, -1};   // a signal handler may write to a pipe, and do little else
std::atomic<int> signals = 0;
constexpr char kInterrupt = 'i', kOver = 'o';

void send(char word) {
    const int error = errno;
    const ssize_t written = write(wakeUp[1], &word, 1);
    (void)written;
    errno = error;
}

extern "C" void onInterrupt(int) {
    if (signals.fetch_add(1) > 0)
        _exit(kCancelled);
    send(kInterrupt);
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

}  // namespace

bool isInterrupted() { return signals > 0; }

Interrupts::Interrupts(std::function<void()> first) : first_(std::move(first)) {
    if (pipe2(wakeUp, O_CLOEXEC) != 0)
        return;   // Ctrl-C then ends the program as it does by itself
    signals = 0;
    thread_ = std::thread([this] { run(); });
    setHandler(onInterrupt);
}

Interrupts::~Interrupts() {
    if (!thread_.joinable())
        return;
    setHandler(SIG_DFL);
    send(kOver);
    thread_.join();
    close(wakeUp[0]);
    close(wakeUp[1]);
}

void Interrupts::run() const {
    for (char word = 0; word != kOver;) {
        const ssize_t got = read(wakeUp[0], &word, 1);
        if (got < 0 && errno == EINTR)
            continue;
        if (got != 1)
            return;
        if (word == kInterrupt)
            dispatch::async(dispatch::main(), [first = first_] { first(); });
    }
}

}  // namespace host::cli

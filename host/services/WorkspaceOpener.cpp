#include "host/services/WorkspaceOpener.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <thread>

extern char **environ;

namespace host {

namespace {

bool staysPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~/").find(c) != std::string_view::npos;
}

// Never destroyed: a thread that waits for what was opened may outlive the program's static objects.
struct FailureListener {
    std::mutex guard;
    std::function<void(const std::string &)> told;
};
FailureListener &failureListener() {
    static auto &listener = *new FailureListener;
    return listener;
}

bool tellFailure(const std::string &what) {
    const auto told = [] {
        const std::scoped_lock lock(failureListener().guard);
        return failureListener().told;
    }();
    if (told)
        told(what);
    return false;
}

// Whatever was opened may end as it likes: only what xdg-open says of itself counts.
bool hasFoundNoProgram(int status) {
    constexpr int kToolMissing = 3, kActionFailed = 4;
    return WIFEXITED(status) && (WEXITSTATUS(status) == kToolMissing || WEXITSTATUS(status) == kActionFailed);
}

}  // namespace

void WorkspaceOpener::setFailureListener(std::function<void(const std::string &)> listener) {
    const std::scoped_lock lock(failureListener().guard);
    failureListener().told = std::move(listener);
}

std::string WorkspaceOpener::addressOf(const NSString &path) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::error_code error;
    const std::string absolute = std::filesystem::absolute(path.str(), error).string();
    std::string address = "file://";
    for (const char c : absolute) {
        if (staysPlain(c)) {
            address += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        address += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return address;
}

bool WorkspaceOpener::openFile(const NSString &path) {
    std::error_code error;
    if (path.isEmpty())
        return false;
    return std::filesystem::exists(path.str(), error) ? start(addressOf(path), path.str()) : tellFailure(path.str());
}

bool WorkspaceOpener::openURL(const NSString &address) {
    for (const char *scheme : {"https://", "http://", "ftp://", "mailto:", "www."})
        if (address.hasPrefix(scheme))
            return start(address.str(), address.str());
    return false;
}

bool WorkspaceOpener::start(const std::string &argument, const std::string &what) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    // Results of ours go to standard output; nobody else may write there.
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string program = program_, word = argument;
    char *const words[] = {program.data(), word.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawnp(&child, program_.c_str(), &actions, nullptr, words, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return tellFailure(what);
    // It may live as long as what it opened; somebody must take its status.
    std::thread([child, what] {
        int status = 0;
        while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        if (hasFoundNoProgram(status))
            tellFailure(what);
    }).detach();
    return true;
}

}  // namespace host

#include "toolkit/views/SetAsideFile.h"

#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <unistd.h>

#include "toolkit/services/NSLog.h"

namespace fs = std::filesystem;

namespace {

struct Held {
    std::string aside;
    bool hasFailed = false;
};

std::mutex mutex;

std::map<std::string, Held> &table() {
    static std::map<std::string, Held> held;
    // What is left when the program ends; made after the table, so it runs before that goes.
    static const struct AtEnd {
        ~AtEnd() { SetAsideFile::settleAll(); }
    } atEnd;
    return held;
}

std::function<void(const NSString &)> &listener() {
    static std::function<void(const NSString &)> hears;
    return hears;
}

std::string asidePathFor(const fs::path &path) {
    static std::atomic<unsigned> number{0};
    const std::string name = "." + path.filename().string() + ".replaced-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
    return (path.parent_path() / name).string();
}

bool settleHeld(const std::string &path, const Held &held, bool whole) {
    std::error_code error;
    if (whole && !held.hasFailed && fs::is_regular_file(fs::symlink_status(path, error))) {
        fs::remove(held.aside, error);
        return !error;
    }
    fs::rename(held.aside, path, error);
    if (error)
        NSLog("The replaced file %@ could not be brought back: %@", NSString(path), NSString(error.message()));
    return !error;
}

}  // namespace

bool SetAsideFile::hold(const NSString &path) {
    settle(path, true);
    std::error_code error;
    if (!fs::is_regular_file(fs::symlink_status(path.str(), error)))
        return false;
    const std::string aside = asidePathFor(path.str());
    fs::rename(path.str(), aside, error);
    if (error)
        return false;
    const std::scoped_lock lock(mutex);
    table()[path.str()] = {aside};
    return true;
}

bool SetAsideFile::isHeld(const NSString &path) {
    const std::scoped_lock lock(mutex);
    return table().contains(path.str());
}

void SetAsideFile::failed(const NSString &path) {
    const auto hears = [&] {
        const std::scoped_lock lock(mutex);
        if (const auto found = table().find(path.str()); found != table().end())
            found->second.hasFailed = true;
        return listener();
    }();
    if (hears)
        hears(path);
}

void SetAsideFile::setFailureListener(std::function<void(const NSString &)> hears) {
    const std::scoped_lock lock(mutex);
    listener() = std::move(hears);
}

bool SetAsideFile::settle(const NSString &path, bool whole) {
    const std::scoped_lock lock(mutex);
    const auto found = table().find(path.str());
    if (found == table().end())
        return true;
    const Held held = found->second;
    table().erase(found);
    return settleHeld(path.str(), held, whole);
}

bool SetAsideFile::settleAll() {
    const std::scoped_lock lock(mutex);
    bool all = true;
    for (const auto &[path, held] : std::exchange(table(), {}))
        all = settleHeld(path, held, true) && all;
    return all;
}

#include "toolkit/services/NSFileManager.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

fs::path pathOf(const NSString &path) { return fs::path(path.str()); }

}  // namespace

bool NSFileManager::fileExistsAtPath(const NSString &path) {
    std::error_code error;
    return !path.isEmpty() && fs::exists(pathOf(path), error);
}

bool NSFileManager::isDirectoryAtPath(const NSString &path) {
    std::error_code error;
    return !path.isEmpty() && fs::is_directory(pathOf(path), error);
}

bool NSFileManager::isWritableFileAtPath(const NSString &path) {
    return !path.isEmpty() && ::access(path.UTF8String(), W_OK) == 0;
}

bool NSFileManager::createDirectoryAtPath(const NSString &path) {
    std::error_code error;
    if (path.isEmpty())
        return false;
    fs::create_directories(pathOf(path), error);
    return isDirectoryAtPath(path);
}

bool NSFileManager::moveItemAtPath_toPath(const NSString &from, const NSString &to) {
    std::error_code error;
    if (from.isEmpty() || to.isEmpty() || fs::exists(pathOf(to), error))
        return false;   // the platform never moves over something
    fs::rename(pathOf(from), pathOf(to), error);
    return !error;
}

bool NSFileManager::removeItemAtPath(const NSString &path) {
    std::error_code error;
    return !path.isEmpty() && fs::remove_all(pathOf(path), error) > 0 && !error;
}

std::int64_t NSFileManager::sizeOfFileAtPath(const NSString &path) {
    std::error_code error;
    const auto size = path.isEmpty() ? 0 : fs::file_size(pathOf(path), error);
    return error ? 0 : static_cast<std::int64_t>(size);
}

std::optional<std::string> NSFileManager::contentsAtPath(const NSString &path) {
    if (path.isEmpty() || isDirectoryAtPath(path))
        return std::nullopt;
    std::ifstream file(pathOf(path), std::ios::binary);
    if (!file)
        return std::nullopt;
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return file.bad() ? std::nullopt : std::optional(std::move(bytes));
}

std::vector<NSString> NSFileManager::contentsOfDirectoryAtPath(const NSString &path) {
    std::vector<NSString> names;
    std::error_code error;
    if (path.isEmpty())
        return names;
    for (fs::directory_iterator entry(pathOf(path), error), end; !error && entry != end; entry.increment(error))
        names.emplace_back(entry->path().filename().string());
    std::ranges::sort(names, [](const NSString &a, const NSString &b) { return a < b; });
    return names;
}

// The settings of the program in one JSON file, in groups: what the plug-in keeps for the product, and its user defaults.
//
// Writing  at once, whole (temporary file, fsync, rename), private to the user; what another process wrote meanwhile stays.
// Damage   a file that is no such JSON, or is above kMaxBytes, is moved aside under its name with ".damaged" and told;
//          the program starts with no settings. A file that cannot be written is told once; settings then last as long as
//          the process.
// Values   flags, whole numbers, numbers, texts. Anything else in the file reads as absent and stays there.
// Threads  any.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "toolkit/services/NSUserDefaults.h"

namespace host {

class SettingsFile {
public:
    static constexpr std::size_t kMaxBytes = 1u << 20;
    // A message for the user, in one line.
    using Warn = std::function<void(const std::string &)>;

    // Nothing is read before the first setting is asked for.
    SettingsFile(std::filesystem::path path, Warn warn) : path_(std::move(path)), warn_(std::move(warn)) {}
    SettingsFile(const SettingsFile &) = delete;

    [[nodiscard]] Value read(const std::string &group, const NSString &key);
    // An absent value removes the key.
    void write(const std::string &group, const NSString &key, const Value &value);
    // One group as a store; it keeps the file.
    [[nodiscard]] static std::shared_ptr<UserDefaultsStore> group(const std::shared_ptr<SettingsFile> &file, std::string name);

private:
    void load();
    void moveAside(const std::string &reason);
    void save();

    std::filesystem::path path_;
    Warn warn_;
    std::mutex mutex_;
    nlohmann::json settings_ = nlohmann::json::object();
    bool isLoaded_ = false, isUnwritable_ = false;
};

}  // namespace host

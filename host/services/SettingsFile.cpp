#include "host/services/SettingsFile.h"

#include "device/File.h"
#include "host/services/Folders.h"

namespace host {

namespace fs = std::filesystem;
using nlohmann::json;

namespace {

class SettingsGroup final : public UserDefaultsStore {
public:
    SettingsGroup(std::shared_ptr<SettingsFile> file, std::string name) : file_(std::move(file)), name_(std::move(name)) {}
    [[nodiscard]] Value read(const NSString &key) override { return file_->read(name_, key); }
    void write(const NSString &key, const Value &value) override { file_->write(name_, key, value); }

private:
    std::shared_ptr<SettingsFile> file_;
    std::string name_;
};

Value toValue(const json &held) {
    switch (held.type()) {
    case json::value_t::boolean:
        return held.get<bool>();
    case json::value_t::number_integer:
    case json::value_t::number_unsigned:
        return held.get<std::int64_t>();
    case json::value_t::number_float:
        return held.get<double>();
    case json::value_t::string:
        return NSString(held.get<std::string>());
    default:
        return {};
    }
}

json toJson(const Value &value) {
    if (value.isFlag())
        return value.boolValue();
    if (value.isInteger())
        return value.integerValue();
    if (value.isNumber())
        return value.doubleValue();
    if (value.isText())
        return value.text().str();
    return nullptr;
}

bool isSettings(const json &settings) {
    if (!settings.is_object())
        return false;
    for (const auto &group : settings)
        if (!group.is_object())
            return false;
    return true;
}

}  // namespace

std::shared_ptr<UserDefaultsStore> SettingsFile::group(const std::shared_ptr<SettingsFile> &file, std::string name) {
    return std::make_shared<SettingsGroup>(file, std::move(name));
}

Value SettingsFile::read(const std::string &group, const NSString &key) {
    const std::scoped_lock lock(mutex_);
    if (!isLoaded_)
        load();
    const auto entries = settings_.find(group);
    if (entries == settings_.end())
        return {};
    const auto entry = entries->find(key.str());
    return entry == entries->end() ? Value() : toValue(*entry);
}

void SettingsFile::write(const std::string &group, const NSString &key, const Value &value) {
    const std::scoped_lock lock(mutex_);
    if (!isLoaded_ || !isUnwritable_)
        load();
    if (json held = toJson(value); held.is_null())
        settings_[group].erase(key.str());
    else
        settings_[group][key.str()] = std::move(held);
    save();
}

void SettingsFile::load() {
    isLoaded_ = true;
    settings_ = json::object();
    std::error_code error;
    if (!fs::exists(path_, error))
        return;
    std::string bytes;
    try {
        bytes = device::readWhole(path_, kMaxBytes);
    } catch (const std::exception &failure) {
        return moveAside(failure.what());
    }
    json settings = json::parse(bytes, nullptr, false);
    if (settings.is_discarded())
        return moveAside("is no JSON");
    if (!isSettings(settings))
        return moveAside("does not hold groups of settings");
    settings_ = std::move(settings);
}

void SettingsFile::moveAside(const std::string &reason) {
    fs::path aside = path_.string() + ".damaged";
    std::error_code error;
    for (int n = 2; fs::exists(aside, error); ++n)
        aside = path_.string() + ".damaged-" + std::to_string(n);
    fs::rename(path_, aside, error);
    if (error) {
        isUnwritable_ = true;   // what stands there must not be written over
        warn_("the settings in " + path_.string() + " cannot be read (" + reason + ") and stay unused");
    } else {
        warn_("the settings in " + path_.string() + " could not be read (" + reason + "); the file is now " + aside.string());
    }
}

void SettingsFile::save() {
    if (isUnwritable_)
        return;
    try {
        makePrivate(path_.parent_path());
        device::replaceWhole(path_, settings_.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
    } catch (const std::exception &failure) {
        isUnwritable_ = true;
        warn_("the settings cannot be kept: " + std::string(failure.what()));
    }
}

}  // namespace host

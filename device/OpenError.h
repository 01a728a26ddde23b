// A folder that cannot be opened as a device. The text names the path and is fit for people.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace device {

class OpenError : public std::runtime_error {
public:
    enum class Kind { noSuchFolder, noDevice, encrypted, damaged, folderOfBackups, unreadable };

    OpenError(Kind kind, std::filesystem::path path, const std::string &reason, std::vector<std::filesystem::path> backups = {});
    ~OpenError() override;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] const std::filesystem::path &path() const { return path_; }
    // The backup folders inside, by name, where the kind is folderOfBackups.
    [[nodiscard]] const std::vector<std::filesystem::path> &backups() const { return backups_; }

private:
    Kind kind_;
    std::filesystem::path path_;
    std::vector<std::filesystem::path> backups_;
};

}  // namespace device

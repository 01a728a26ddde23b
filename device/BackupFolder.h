// A device backup of iOS 10 or later: Manifest.db names the files, which lie under the SHA-1 of "domain-path" in
// folders of two letters. It is only ever read: nothing in it is changed, no side files appear.
#pragma once

#include <mutex>

#include "device/FileTree.h"

namespace device {

class BackupFolder : public FileTree {
public:
    // Throws OpenError: encrypted, damaged (Manifest.plist or Manifest.db).
    explicit BackupFolder(const std::filesystem::path &folder);
    // True for a folder that has the marks of a backup, readable or not.
    [[nodiscard]] static bool looksLikeOne(const std::filesystem::path &folder);
    // Lower-case hex SHA-1 of "domain-path".
    [[nodiscard]] static std::string fileID(const DevicePath &path);

    [[nodiscard]] DeviceInfo info() const override;
    [[nodiscard]] bool isInCloud(CloudKind) const override { return false; }
    [[nodiscard]] const std::filesystem::path &root() const override { return root_; }
    [[nodiscard]] bool isWritable() const override { return false; }
    [[nodiscard]] std::int64_t freeBytes() const override { return 0; }
    [[nodiscard]] std::optional<std::filesystem::path> find(const DevicePath &path) const override;
    [[nodiscard]] std::vector<FileEntry> list(const DevicePath &folder) const override;
    [[nodiscard]] std::vector<std::string> domains() const override;
    [[nodiscard]] sqlite::Database openForReading(const DevicePath &path) const override;
    [[nodiscard]] WriterLock lockForWriting() const override;
    [[nodiscard]] sqlite::Database openForWriting(const WriterLock &, const DevicePath &) const override;
    void attachForWriting(const WriterLock &, sqlite::Database &, const DevicePath &, const char *) const override;
    std::string add(const WriterLock &, const DevicePath &, const std::string &, File &) const override;
    void replace(const WriterLock &, const DevicePath &, File &) const override;
    void replace(const WriterLock &, const DevicePath &, std::string_view) const override;
    void remove(const WriterLock &, const DevicePath &) const override;

private:
    [[nodiscard]] std::filesystem::path placeOf(const std::string &fileID) const;
    [[noreturn]] void refuse() const;

    std::filesystem::path root_;
    mutable std::mutex guard_;   // of the manifest's connection and its statement
    mutable std::optional<sqlite::Database> manifest_;
    mutable sqlite::Statement find_;
};

}  // namespace device

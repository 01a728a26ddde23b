// A device image: a folder laid out as the device's own file system, one folder per domain, and Device.plist.
// It may be written, by one writer at a time.
#pragma once

#include <functional>

#include "device/FileTree.h"
#include "device/plist/PropertyList.h"

namespace device {

class ImageFolder : public FileTree {
public:
    static constexpr const char *kPropertiesName = "Device.plist";

    // Throws OpenError: damaged where Device.plist is no property list.
    explicit ImageFolder(const std::filesystem::path &folder);
    // A new image without any data. `folder` is missing or empty; it stands whole or not at all, `fill` included.
    static void create(const std::filesystem::path &folder, const PropertyList &properties,
                       const std::function<void(ImageFolder &)> &fill = {});

    [[nodiscard]] DeviceInfo info() const override;
    [[nodiscard]] bool isInCloud(CloudKind kind) const override;
    [[nodiscard]] const std::filesystem::path &root() const override { return root_; }
    [[nodiscard]] bool isWritable() const override { return true; }
    [[nodiscard]] std::int64_t freeBytes() const override;
    [[nodiscard]] std::optional<std::filesystem::path> find(const DevicePath &path) const override;
    [[nodiscard]] std::vector<FileEntry> list(const DevicePath &folder) const override;
    [[nodiscard]] std::vector<std::string> domains() const override;
    [[nodiscard]] sqlite::Database openForReading(const DevicePath &path) const override;
    [[nodiscard]] WriterLock lockForWriting() const override { return WriterLock(root_); }
    [[nodiscard]] sqlite::Database openForWriting(const WriterLock &lock, const DevicePath &path) const override;
    void attachForWriting(const WriterLock &lock, sqlite::Database &database, const DevicePath &path, const char *schema) const override;
    std::string add(const WriterLock &lock, const DevicePath &folder, const std::string &name, File &source) const override;
    void replace(const WriterLock &lock, const DevicePath &path, File &source) const override;
    void replace(const WriterLock &lock, const DevicePath &path, std::string_view bytes) const override;
    void remove(const WriterLock &lock, const DevicePath &path) const override;

    // Device.plist as it stands now.
    [[nodiscard]] PropertyList properties() const;
    void setProperties(const WriterLock &lock, const PropertyList &properties) const;
    // Makes a new database with the tables of `sql`; nothing where the file stands already.
    void createDatabase(const WriterLock &lock, const DevicePath &path, const std::string &sql) const;

private:
    [[nodiscard]] std::optional<std::filesystem::path> placeOf(const DevicePath &path) const;
    // The same for writing: throws, and makes the folders above it.
    [[nodiscard]] std::filesystem::path placeForWriting(const DevicePath &path) const;

    std::filesystem::path root_;
};

}  // namespace device

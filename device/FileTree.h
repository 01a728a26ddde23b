// The files of one device, by domain ("HomeDomain") and path below it ("Library/SMS/sms.db"). Everything that stands on
// a device reads and writes through this.
//
// Paths    a path never leaves its domain's folder: an absolute one, one with "..", an empty or NUL name, or one that a
//          link leads outside is refused. Reading answers "not there", writing throws AccessError (outside).
// Errors   AccessError, text fit for people. Writing a backup always throws (readOnly).
// Writing  needs a WriterLock, held for the length of one operation.
// Threads  any; every call asks the disk anew.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/AccessError.h"
#include "device/DeviceInfo.h"
#include "device/File.h"
#include "device/WriterLock.h"
#include "device/sqlite/Database.h"

namespace device {

struct DevicePath {
    std::string domain;
    std::string path;
    // "HomeDomain-Library/SMS/sms.db": for messages, and what a backup's file names are hashes of.
    [[nodiscard]] std::string name() const { return domain + "-" + path; }
};

struct FileEntry {
    std::string name;   // one component
    bool isFolder = false;
    std::int64_t sizeBytes = 0;
};

class FileTree {
public:
    virtual ~FileTree() = default;

    [[nodiscard]] virtual DeviceInfo info() const = 0;
    // True while this kind of data is kept in the cloud.
    [[nodiscard]] virtual bool isInCloud(CloudKind kind) const = 0;
    // The folder on the computer, without links.
    [[nodiscard]] virtual const std::filesystem::path &root() const = 0;
    [[nodiscard]] virtual bool isWritable() const = 0;
    // False once the folder has gone.
    [[nodiscard]] bool isThere() const;
    // Bytes that the device's files take; what the disk has left for it (0 for a backup).
    [[nodiscard]] std::int64_t usedBytes() const;
    [[nodiscard]] virtual std::int64_t freeBytes() const = 0;

    // The file on the computer; nothing where there is no such file.
    [[nodiscard]] virtual std::optional<std::filesystem::path> find(const DevicePath &path) const = 0;
    [[nodiscard]] File open(const DevicePath &path) const;
    // The direct children of a folder ("" is the domain itself) by name; none where it is missing.
    [[nodiscard]] virtual std::vector<FileEntry> list(const DevicePath &folder) const = 0;
    // Names of the domains.
    [[nodiscard]] virtual std::vector<std::string> domains() const = 0;

    // A database for reading, with its -wal. Nothing of the device is changed: where reading would need side files a
    // private copy is read. Throws AccessError (missing, damaged, locked) or sqlite::Error.
    [[nodiscard]] virtual sqlite::Database openForReading(const DevicePath &path) const = 0;

    [[nodiscard]] virtual WriterLock lockForWriting() const = 0;
    // A database for one writing operation. Its changes are kept or lost as a whole, together with those of databases
    // attached by `attachForWriting`.
    [[nodiscard]] virtual sqlite::Database openForWriting(const WriterLock &lock, const DevicePath &path) const = 0;
    // Makes the file where it is missing.
    virtual void attachForWriting(const WriterLock &lock, sqlite::Database &database, const DevicePath &path, const char *schema) const = 0;
    // Puts a copy of `source` into a folder, which is made where missing; gives the name that it got there: `name`, with
    // " (1)", " (2)", ... before the extension where that is taken.
    virtual std::string add(const WriterLock &lock, const DevicePath &folder, const std::string &name, File &source) const = 0;
    // Replaces one file whole or makes it.
    virtual void replace(const WriterLock &lock, const DevicePath &path, File &source) const = 0;
    virtual void replace(const WriterLock &lock, const DevicePath &path, std::string_view bytes) const = 0;
    // Removes one file; one that is not there is no error.
    virtual void remove(const WriterLock &lock, const DevicePath &path) const = 0;

    // True for a path that names something inside its domain.
    [[nodiscard]] static bool staysInside(const DevicePath &path);

protected:
    // Reads a private copy of a database and of what lies beside it (a missing one is left out).
    [[nodiscard]] static sqlite::Database openCopy(const std::filesystem::path &database, const std::filesystem::path &wal,
                                                   const std::filesystem::path &journal);
};

}  // namespace device

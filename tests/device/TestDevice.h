// Small devices on disk for the tests of the device layer.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"
#include "device/ImageFolder.h"
#include "device/contacts/AddressBookStore.h"
#include "tests/support/ContactText.h"
#include "tests/support/TempFolder.h"

namespace testdevice {

using ::pictureOf, ::readFile, ::TempFolder;

// The tables of an address book as one version of the system made it.
struct Version {
    const char *name;
    std::string sql;
};
[[nodiscard]] const std::vector<Version> &versions();
[[nodiscard]] const Version &newestVersion();

void execOn(const std::filesystem::path &database, const std::string &sql);
// The first column of all rows, joined by "|"; NULL is "-".
[[nodiscard]] std::string queryOn(const std::filesystem::path &database, const std::string &sql,
                                  device::sqlite::Access access = device::sqlite::Access::readOnly);

// An image that holds a description of the device and nothing else.
class EmptyImage {
public:
    EmptyImage();

    [[nodiscard]] const std::filesystem::path &folder() const { return folder_.path(); }
    [[nodiscard]] std::filesystem::path path() const { return folder() / "image"; }
    [[nodiscard]] std::shared_ptr<device::ImageFolder> open() const { return std::make_shared<device::ImageFolder>(path()); }

private:
    TempFolder folder_;
};

// An image with an address book in it.
class TestImage : public EmptyImage {
public:
    explicit TestImage(const Version &version = newestVersion(), const std::string &sql = "");
    [[nodiscard]] std::filesystem::path database() const { return path() / "HomeDomain/Library/AddressBook/AddressBook.sqlitedb"; }
    [[nodiscard]] std::filesystem::path images() const { return path() / "HomeDomain/Library/AddressBook/AddressBookImages.sqlitedb"; }
    [[nodiscard]] std::shared_ptr<device::contacts::AddressBookStore> store() const;
    // A fresh reading.
    [[nodiscard]] ContactList contacts() const;
    void exec(const std::string &sql) const;
    void execImages(const std::string &sql) const;
    [[nodiscard]] std::string query(const std::string &sql) const { return queryOn(database(), sql); }
};

inline void write(const std::filesystem::path &file, std::string_view bytes) { writeFile(file, bytes); }

[[nodiscard]] std::shared_ptr<ZpContactDataInfo> named(const char *first);
// As one line, but for the key that the row gives it.
[[nodiscard]] std::string textOf(const ZpContactDataInfo &contact);
[[nodiscard]] std::string names(const ContactList &contacts);

// Runs `work` in a child process and waits; gives its exit status, 128 + the signal that ended it.
[[nodiscard]] int inChild(const std::function<int()> &work);

}  // namespace testdevice

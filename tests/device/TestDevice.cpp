#include "tests/device/TestDevice.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "device/plist/PropertyList.h"

namespace testdevice {

namespace fs = std::filesystem;

const std::vector<Version> &versions() {
    static const std::vector<Version> all = [] {
        std::vector<Version> made;
        for (const char *name : {"early", "phoneOS3", "iOS6", "iOS17", "iOS18WithoutKeys"})   // 17: keys, defaults and triggers of a real one
            made.push_back({name, readFile(std::string(HN_SAMPLES_DIR "/addressbook/") + name + ".sql")});
        return made;
    }();
    return all;
}

const Version &newestVersion() { return versions()[3]; }

void execOn(const fs::path &database, const std::string &sql) {
    device::sqlite::Database opened(database, device::sqlite::Access::create);
    opened.exec(sql);
}

EmptyImage::EmptyImage() {
    device::PropertyList properties;
    properties.setText("DeviceName", "Test Phone");
    properties.setText("UniqueDeviceID", "0001-ABCD");
    properties.setText("ProductVersion", "17.2");
    write(path() / "Device.plist", properties.bytes());
}

TestImage::TestImage(const Version &version, const std::string &sql) {
    fs::create_directories(database().parent_path());
    execOn(database(), version.sql + sql);
}

std::shared_ptr<device::contacts::AddressBookStore> TestImage::store() const {
    return device::contacts::AddressBookStore::open(open());
}

ContactList TestImage::contacts() const {
    const auto reading = store();
    reading->getContactDataFromAddressList();
    const auto failure = reading->failures().first();
    EXPECT_FALSE(failure) << failure->text;
    return reading->contactArray();
}

void TestImage::exec(const std::string &sql) const { execOn(database(), sql); }
void TestImage::execImages(const std::string &sql) const { execOn(images(), sql); }

std::string queryOn(const fs::path &database, const std::string &sql, device::sqlite::Access access) {
    device::sqlite::Database opened(database, access);
    device::sqlite::Statement row = opened.prepare(sql);
    std::string joined;
    for (int n = 0; row.step(); ++n)
        joined += (n ? "|" : "") + (row.isNull(0) ? std::string("-") : std::string(row.rawText(0)));
    return joined;
}

std::shared_ptr<ZpContactDataInfo> named(const char *first) { return contactOf(std::string("first_name=") + first); }

std::string textOf(const ZpContactDataInfo &contact) {
    const auto copy = contact.copy();
    copy->setPKey(nullptr);
    return described(*copy);
}

std::string names(const ContactList &contacts) {
    std::string joined;
    for (const auto &c : contacts)
        joined += (joined.empty() ? "" : "|") + c->completeName().str();
    return joined;
}

int inChild(const std::function<int()> &work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace testdevice

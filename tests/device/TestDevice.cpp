#include "tests/device/TestDevice.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "device/plist/PropertyList.h"
#include "device/sqlite/Functions.h"

namespace testdevice {

namespace fs = std::filesystem;

const std::vector<Version> &versions() {
    const auto sql = [](const char *name) { return readFile(std::string(HN_SAMPLES_DIR "/addressbook/") + name + ".sql"); };
    static const std::vector<Version> all = {
        {"early", sql("early"), false, true},
        {"phoneOS3", sql("phoneOS3"), true, true},
        {"iOS6", sql("iOS6"), true, true},
        {"iOS17", sql("iOS17"), true, true},   // keys, defaults and triggers as they stand on a device
        {"iOS18WithoutKeys", sql("iOS18WithoutKeys"), true, true},
    };
    return all;
}

const Version &newestVersion() { return versions()[3]; }

void execOn(const fs::path &database, const std::string &sql) {
    device::sqlite::Database opened(database, device::sqlite::Access::create);
    opened.exec(sql);
}

TestImage::TestImage(const Version &version, const std::string &sql) {
    device::PropertyList properties;
    properties.setText("DeviceName", "Test Phone");
    properties.setText("UniqueDeviceID", "0001-ABCD");
    properties.setText("ProductVersion", "17.2");
    write(path() / "Device.plist", properties.bytes());
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

std::string TestImage::query(const std::string &sql) const {
    device::sqlite::Database opened(database(), device::sqlite::Access::readOnly);
    device::sqlite::Statement row = opened.prepare(sql);
    std::string joined;
    for (int n = 0; row.step(); ++n)
        joined += (n ? "|" : "") + (row.isNull(0) ? std::string("-") : std::string(row.rawText(0)));
    return joined;
}

std::shared_ptr<ZpContactDataInfo> contact(const Fill &fill) {
    auto made = make<ZpContactDataInfo>();
    fill(*made);
    return made;
}

std::shared_ptr<ZpContactDataInfo> named(const char *first, const char *last) {
    return contact([&](ZpContactDataInfo &c) {
        c.setFirst_name(first);
        c.setLast_name(last);
    });
}

std::string described(const ZpContactDataInfo &c) {
    std::ostringstream out;
    const auto text = [&out](const char *name, const NSString &value) {
        if (!value.isNil())
            out << name << "=" << value.view() << "\n";
    };
    text("complete", c.completeName()), text("title", c.name_title()), text("first", c.first_name()), text("middle", c.middle_name());
    text("last", c.last_name()), text("suffix", c.name_suffix()), text("firstYomi", c.first_name_yomi());
    text("middleYomi", c.middle_name_yomi()), text("lastYomi", c.last_name_yomi()), text("nickname", c.nickname());
    text("company", c.company_name()), text("department", c.department()), text("job", c.job_title());
    text("birthday", c.birthday()), text("notes", c.notes());
    for (const auto &i : c.phone_numbers()) text(("phone " + i.type.str()).c_str(), i.phone_number);
    for (const auto &i : c.emails()) text(("email " + i.type.str()).c_str(), i.email);
    for (const auto &i : c.addresses()) {
        out << "address " << i.type.view() << "\n";
        text(" street", i.street), text(" city", i.city), text(" state", i.state), text(" zip", i.postal_code);
        text(" country", i.country), text(" code", i.country_code);
    }
    for (const auto &i : c.dates()) text(("date " + i.type.str()).c_str(), i.date);
    for (const auto &i : c.ims())
        out << "im " << i.type.view() << " " << i.service.view() << (i.user.isNil() ? "" : "=" + i.user.str()) << "\n";
    for (const auto &i : c.urls()) text(("url " + i.type.str()).c_str(), i.url);
    for (const auto &i : c.relatednames()) text(("related " + i.type.str()).c_str(), i.relatename);
    return out.str();
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

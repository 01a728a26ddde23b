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

namespace {

#define HN_EARLY_VALUES                                                                                                        \
    "CREATE TABLE ABMultiValue (UID INTEGER PRIMARY KEY, record_id INTEGER, property INTEGER, identifier INTEGER, label INTEGER, value TEXT);" \
    "CREATE TABLE ABMultiValueEntry (parent_id INTEGER, key INTEGER, value TEXT, UNIQUE(parent_id, key));"                     \
    "CREATE TABLE ABMultiValueEntryKey (value TEXT, UNIQUE(value));"                                                           \
    "CREATE TABLE ABMultiValueLabel (value TEXT, UNIQUE(value));"
#define HN_PERSON_START                                                                                                                  \
    "CREATE TABLE ABPerson (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, First TEXT, Last TEXT, Middle TEXT, FirstPhonetic TEXT, "           \
    "MiddlePhonetic TEXT, LastPhonetic TEXT, Organization TEXT, Department TEXT, Note TEXT, Kind INTEGER, Birthday TEXT, JobTitle TEXT, " \
    "Nickname TEXT, Prefix TEXT, Suffix TEXT, FirstSort TEXT, LastSort TEXT, CreationDate INTEGER, ModificationDate INTEGER, "           \
    "CompositeNameFallback TEXT"
#define HN_PERSON_2009                                                                                                                       \
    ", ExternalIdentifier TEXT, StoreID INTEGER, DisplayName TEXT, FirstSortSection TEXT, LastSortSection TEXT, FirstSortLanguageIndex " \
    "INTEGER DEFAULT 2147483647, LastSortLanguageIndex INTEGER DEFAULT 2147483647"
#define HN_GROUPS                                                                                                          \
    "CREATE TABLE ABGroup (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, ExternalIdentifier TEXT, StoreID INTEGER);" \
    "CREATE TABLE ABGroupMembers (UID INTEGER PRIMARY KEY, group_id INTEGER, member_type INTEGER, member_id INTEGER, "     \
    "UNIQUE(group_id, member_type, member_id));"

const char *const kStrict =   // keys, defaults and triggers as they stand on a device
    HN_PERSON_START HN_PERSON_2009
    ", PersonLink INTEGER DEFAULT -1, ImageURI TEXT, guid TEXT NOT NULL DEFAULT (ab_generate_guid()), UNIQUE(guid));"
    "CREATE TABLE ABMultiValue (UID INTEGER PRIMARY KEY, record_id INTEGER, property INTEGER, identifier INTEGER, label INTEGER, value TEXT, "
    "guid TEXT NOT NULL DEFAULT (ab_generate_guid()), UNIQUE(record_id, property, identifier), UNIQUE(guid));"
    "CREATE TABLE ABMultiValueEntry (parent_id INTEGER, key INTEGER, value TEXT, UNIQUE(parent_id, key));"
    "CREATE TABLE ABMultiValueEntryKey (value TEXT, UNIQUE(value));"
    "CREATE TABLE ABMultiValueLabel (value TEXT, UNIQUE(value));"
    "CREATE TABLE ABPhoneLastFour (multivalue_id INTEGER PRIMARY KEY, value TEXT);"
    "CREATE TABLE ABLog (what TEXT);"
    "CREATE TRIGGER note_insert AFTER INSERT ON ABPerson BEGIN INSERT INTO ABLog VALUES ('+' || coalesce(ab_only_on_device(NEW.First), NEW.First)); END;"
    "CREATE TRIGGER note_delete AFTER DELETE ON ABPerson BEGIN INSERT INTO ABLog VALUES ('-' || OLD.First); END;" HN_GROUPS;

}  // namespace

const std::vector<Version> &versions() {
    static const std::vector<Version> all = {
        {"early", HN_EARLY_VALUES HN_PERSON_START ");", false, true},
        {"phoneOS3", HN_EARLY_VALUES HN_GROUPS HN_PERSON_START HN_PERSON_2009 ");", true, true},
        {"iOS6", HN_EARLY_VALUES HN_GROUPS HN_PERSON_START HN_PERSON_2009 ", PersonLink INTEGER DEFAULT -1, ImageURI TEXT, IsPreferredName INTEGER DEFAULT 1);",
         true, true},
        {"iOS17", kStrict, true, true},
        {"iOS18WithoutKeys",
         HN_PERSON_START HN_PERSON_2009
         ", guid TEXT NOT NULL DEFAULT (ab_generate_guid()));"
         "CREATE TABLE ABMultiValue (UID INTEGER PRIMARY KEY, record_id INTEGER, property INTEGER, identifier INTEGER, label INTEGER, value TEXT, guid TEXT NOT "
         "NULL DEFAULT (ab_generate_guid()));"
         "CREATE TABLE ABMultiValueLabel (value TEXT); CREATE TABLE ABMultiValueEntry (parent_id INTEGER, key INTEGER, value TEXT);"
         "CREATE TABLE ABMultiValueEntryKey (value TEXT); CREATE TABLE ABGroup (ROWID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT, guid TEXT NOT NULL "
         "DEFAULT (ab_generate_guid())); CREATE TABLE ABGroupMembers (UID INTEGER PRIMARY KEY, group_id INTEGER, member_type INTEGER, member_id INTEGER);",
         true, true},
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

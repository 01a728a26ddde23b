#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/device/TestDevice.h"

using namespace testdevice;

namespace {

constexpr const char *kAda = R"(
INSERT INTO ABPerson (ROWID, Prefix, First, Middle, Last, Suffix, FirstPhonetic, LastPhonetic, MiddlePhonetic, Nickname, Organization, Department,
    JobTitle, Note, Birthday) VALUES (7, 'Dr.', 'Ada', 'K.', 'Lovelace', 'II', 'aida', 'lavleis', 'kay', 'Countess', 'Engines', '', 'Analyst',
    'line' || char(10) || 'two', '-547783200.000000');
INSERT INTO ABMultiValueLabel (rowid, value) VALUES (1, '_$!<Mobile>!$_'), (2, 'boat'), (3, '_$!<Home>!$_');
INSERT INTO ABMultiValueEntryKey (rowid, value) VALUES (11, 'ZIP'), (12, 'street'), (13, 'City'), (14, 'State'), (15, 'Country'), (16, 'CountryCode'),
    (17, 'username'), (18, 'Service');
INSERT INTO ABMultiValue (UID, record_id, property, identifier, label, value) VALUES (9, 7, 3, 1, NULL, '2'), (5, 7, 3, 0, 1, '+1'), (6, 7, 4, 0, 2, 'a@b'),
    (20, 7, 5, 0, 3, NULL), (21, 7, 13, 0, 3, NULL), (22, 7, 12, 0, NULL, '0'), (23, 7, 22, 0, 99, 'http://x'), (24, 7, 23, 0, 2, 'Byron'),
    (25, 7, 16, 0, 2, 'ringtone'), (26, 404, 3, 0, 1, 'nobody');
INSERT INTO ABMultiValueEntry (parent_id, key, value) VALUES (21, 17, 'ada'), (20, 12, 'Main 1'), (20, 11, '1000'), (20, 13, 'London'), (20, 14, ''),
    (20, 15, 'UK'), (20, 16, 'gb'), (21, 18, 'Chat'), (777, 11, 'orphan'), (20, 999, 'unknown');
)";

class AddressBookVersions : public testing::TestWithParam<Version> {};

TEST_P(AddressBookVersions, readsEveryField) {
    const TestImage image(GetParam(), kAda);
    const ContactList contacts = image.contacts();
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_EQ(contacts[0]->pKey(), NSString("7"));
    EXPECT_EQ(described(*contacts[0]), R"(complete=Dr. Ada K. Lovelace II
title=Dr.
first=Ada
middle=K.
last=Lovelace
suffix=II
firstYomi=aida
middleYomi=kay
lastYomi=lavleis
nickname=Countess
company=Engines
department=
job=Analyst
birthday=1983-08-23
notes=line
two
phone Mobile=+1
phone other=2
email boat=a@b
address Home
 street=Main 1
 city=London
 state=
 zip=1000
 country=UK
 code=gb
date other=2001-01-01
im Home Chat=ada
url other=http://x
related boat=Byron
)");
    EXPECT_EQ(contacts[0]->image_data(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(AddressBook, AddressBookVersions, testing::ValuesIn(versions()),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(AddressBookReading, keepsTheOrderOfTheDevice) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (ROWID, First) VALUES (9, 'c'), (2, 'b'), (30, 'a')");
    EXPECT_EQ(names(image.contacts()), "b|c|a");
}

TEST(AddressBookReading, givesGroupsWithTheirPersons) {
    const TestImage image(newestVersion(),
                          "INSERT INTO ABGroup (ROWID, Name) VALUES (4, 'Friends'), (3, NULL);"
                          "INSERT INTO ABGroupMembers (group_id, member_type, member_id) VALUES (4, 0, 12), (4, 1, 3), (99, 0, 12), (4, 0, 5)");
    const auto store = image.store();
    store->getContactDataFromAddressList();
    const ContactGroupList groups = store->groupArray();
    ASSERT_EQ(groups.size(), 2u);
    EXPECT_TRUE(groups[0]->groupName.isNil());
    EXPECT_EQ(groups[1]->groupName, NSString("Friends"));
    EXPECT_EQ(groups[1]->ContactKey, (std::vector<NSString>{"12", "5"}));
    store->freeAddressBookInfo();
    EXPECT_TRUE(store->groupArray().empty());
}

struct NameRow {
    const char *name, *values, *complete;
};
class CompleteName : public testing::TestWithParam<NameRow> {};

TEST_P(CompleteName, isNeverAbsent) {
    const TestImage image(newestVersion(), std::string("INSERT INTO ABPerson (Prefix, First, Middle, Last, Suffix, Organization) VALUES ") + GetParam().values);
    EXPECT_EQ(image.contacts().at(0)->completeName(), NSString(GetParam().complete));
}

INSTANTIATE_TEST_SUITE_P(AddressBook, CompleteName,
                         testing::Values(NameRow{"onePart", "(NULL, NULL, NULL, 'Li', NULL, 'Acme')", "Li"},
                                         NameRow{"emptyPartsLeaveNoBlank", "('', 'A', '', 'B', '', NULL)", "A B"},
                                         NameRow{"organizationStandsIn", "('', NULL, NULL, NULL, NULL, 'Acme')", "Acme"},
                                         NameRow{"nothingAtAll", "(NULL, NULL, NULL, NULL, NULL, NULL)", ""},
                                         NameRow{"blankIsAName", "(NULL, ' ', NULL, NULL, NULL, 'Acme')", " "}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(AddressBookReading, aTableThatIsMissingIsEmpty) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('Ada'); DROP TABLE ABMultiValue; DROP TABLE ABMultiValueEntry;"
                                           "DROP TABLE ABMultiValueLabel; DROP TABLE ABGroup; DROP TABLE ABGroupMembers");
    EXPECT_EQ(described(*image.contacts().at(0)), "complete=Ada\nfirst=Ada\n");
}

TEST(AddressBookReading, aColumnThatIsMissingIsAbsent) {
    const TestImage image({"tiny", "CREATE TABLE ABPerson (Last TEXT); INSERT INTO ABPerson VALUES ('Li'); CREATE TABLE ABMultiValue (UID INTEGER PRIMARY KEY, "
                                   "record_id INTEGER, property INTEGER); INSERT INTO ABMultiValue VALUES (1, 1, 3)", false, false});
    const ContactList contacts = image.contacts();
    EXPECT_EQ(described(*contacts.at(0)), "complete=Li\nlast=Li\n");
    EXPECT_EQ(contacts[0]->phone_numbers().size(), 1u);
}

TEST(AddressBookReading, aDeviceWithoutAnAddressBookHasNoContacts) {
    const TestImage image;
    std::filesystem::remove(image.database());
    EXPECT_EQ(names(image.contacts()), "");
}

TEST(AddressBookReading, everyTextIsValid) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First, Last) VALUES (CAST(x'41FF42' AS TEXT), CAST(x'410042' AS TEXT));"
                                           "INSERT INTO ABPerson (First, Birthday) VALUES (x'C3', 12.5)");
    const ContactList contacts = image.contacts();
    EXPECT_EQ(contacts.at(0)->first_name(), NSString("A\uFFFD""B"));
    EXPECT_EQ(contacts.at(0)->last_name(), NSString("AB"));
    EXPECT_EQ(contacts.at(1)->first_name(), NSString("\uFFFD"));
    EXPECT_EQ(contacts.at(1)->birthday(), NSString("2001-01-01"));
}

TEST(AddressBookReading, aLogBesideTheDatabaseIsReadAndNothingChanged) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('old'); PRAGMA journal_mode = WAL");
    EXPECT_EQ(inChild([&] {   // ends without the last connection's checkpoint
                  device::sqlite::Database database(image.database(), device::sqlite::Access::readWrite);
                  database.exec("INSERT INTO ABPerson (First) VALUES ('new')");
                  _exit(3);
                  return 0;
              }), 3);
    std::filesystem::remove(image.database().string() + "-shm");
    const std::string before = pictureOf(image.path());
    EXPECT_EQ(names(image.contacts()), "old|new");
    EXPECT_EQ(pictureOf(image.path()), before);
}

// ---------------------------------------------------------------- pictures

TEST(ContactPictures, theFullSizeRowComesBeforeThumbnails) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (ROWID, First) VALUES (1, 'both'), (2, 'thumb'), (3, 'none'), (4, 'emptyFull')");
    image.execImages("CREATE TABLE ABFullSizeImage (record_id INTEGER PRIMARY KEY, data BLOB); CREATE TABLE ABThumbnailImage (record_id INTEGER, format INTEGER, data BLOB);"
                     "INSERT INTO ABFullSizeImage VALUES (1, x'FFD8FFAA'), (4, x'');"
                     "INSERT INTO ABThumbnailImage VALUES (1, 0, x'01'), (2, 0, x'02'), (2, 2, x'0304FFD8FF05'), (4, 0, x'07')");
    const ContactList contacts = image.contacts();
    const auto bytes = [&](int i) { return std::string(contacts.at(static_cast<std::size_t>(i))->image_data()->data()->bytes()); };
    EXPECT_EQ(bytes(0), "\xFF\xD8\xFF\xAA");
    EXPECT_EQ(bytes(1), "\xFF\xD8\xFF\x05");   // the newest row, without what the device puts in front
    EXPECT_EQ(contacts[2]->image_data(), nullptr);
    EXPECT_EQ(bytes(3), "\x07");
}

TEST(ContactPictures, aPictureThatHasGoneIsNullAndADamagedFileHasNone) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (ROWID, First) VALUES (1, 'Ada')");
    image.execImages("CREATE TABLE ABFullSizeImage (record_id INTEGER PRIMARY KEY, data BLOB); INSERT INTO ABFullSizeImage VALUES (1, x'FFD8FFAA')");
    const ContactList contacts = image.contacts();
    image.execImages("DELETE FROM ABFullSizeImage");
    EXPECT_EQ(contacts.at(0)->image_data()->data(), nullptr);
    write(image.images(), "no database at all, but long enough to be looked at as one ........................................................");
    EXPECT_EQ(image.contacts().at(0)->image_data(), nullptr);
}

// ---------------------------------------------------------------- damage

struct DamageRow {
    const char *name;
    std::function<void(const TestImage &)> damage;
    device::AccessError::Kind kind;
    const char *words;
};
class DamagedAddressBook : public testing::TestWithParam<DamageRow> {};

TEST_P(DamagedAddressBook, hasAClearOutcome) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('Ada')");
    GetParam().damage(image);
    const auto store = image.store();
    store->getContactDataFromAddressList();
    EXPECT_TRUE(store->contactArray().empty());
    const auto failure = store->failures().first();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->kind, GetParam().kind) << failure->text;
    EXPECT_NE(failure->text.find(GetParam().words), std::string::npos) << failure->text;
    EXPECT_NE(failure->text.find("AddressBook.sqlitedb"), std::string::npos) << failure->text;
    EXPECT_FALSE(store->addNewContact_toGroups(named("New"), {}));
}

using Kind = device::AccessError::Kind;
INSTANTIATE_TEST_SUITE_P(
    AddressBook, DamagedAddressBook,
    testing::Values(DamageRow{"noDatabase", [](const TestImage &i) { write(i.database(), std::string(5000, 'x')); }, Kind::damaged, "not a database"},
                    DamageRow{"foreignDatabase", [](const TestImage &i) { i.exec("DROP TABLE ABPerson"); }, Kind::damaged, "no address book"},
                    DamageRow{"aView", [](const TestImage &i) { i.exec("ALTER TABLE ABPerson RENAME TO Other; CREATE VIEW ABPerson AS SELECT * FROM Other"); },
                              Kind::damaged, "no address book"},
                    DamageRow{"emptyFile", [](const TestImage &i) { write(i.database(), ""); }, Kind::damaged, "no address book"},
                    DamageRow{"halfAFile", [](const TestImage &i) { std::filesystem::resize_file(i.database(), 9000); }, Kind::damaged, "malformed"},
                    DamageRow{"forgedJournal",
                              [](const TestImage &i) {
                                  write(i.database().string() + "-journal", std::string(600, 'j') + "/etc/victim" + std::string("\0\0\0\x0b", 4) + "sums" +
                                                                                "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7");
                              },
                              Kind::damaged, "/etc/victim"},
                    DamageRow{"journalIsALink", [](const TestImage &i) { std::filesystem::create_symlink("/etc/passwd", i.database().string() + "-journal"); },
                              Kind::damaged, "not a plain file"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(DamagedAddressBook, neverCrashesWhateverByteIsWrong) {
    const TestImage image(newestVersion(), kAda);
    const std::string whole = readFile(image.database());
    for (std::size_t at = 0; at < whole.size(); at += 131) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x55);
        write(image.database(), bytes);
        const auto store = image.store();
        store->getContactDataFromAddressList();
        EXPECT_TRUE(store->contactArray().size() <= 1 || !store->failures().first()) << at;
    }
}

TEST(DamagedAddressBook, aLockedDatabaseSaysSo) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('Ada')");
    device::sqlite::Database other(image.database(), device::sqlite::Access::readWrite);
    other.exec("BEGIN EXCLUSIVE");
    const auto store = image.store();
    EXPECT_FALSE(store->addNewContact_toGroups(named("New"), {}));
    EXPECT_EQ(store->failures().first()->kind, Kind::locked);
}

}  // namespace

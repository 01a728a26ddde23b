#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/device/TestDevice.h"

using namespace testdevice;

namespace {

std::string everyField() { return readFile(HN_SAMPLES_DIR "/addressbook/everyField.sql"); }

class AddressBookVersions : public testing::TestWithParam<Version> {};

TEST_P(AddressBookVersions, readsEveryField) {
    const TestImage image(GetParam(), everyField());
    const ContactList contacts = image.contacts();
    ASSERT_EQ(contacts.size(), 1u);
    EXPECT_EQ(described(*contacts[0]),
              "pKey=7; completeName=Dr. Ada K. Lovelace II; last_name=Lovelace; first_name=Ada; middle_name=K.; name_title=Dr.; "
              "name_suffix=II; first_name_yomi=aida; middle_name_yomi=kay; last_name_yomi=lavleis; nickname=Countess; company=Engines; "
              "department=; job=Analyst; birthday=1983-08-23; notes=line\\ntwo; tel(Mobile)=+1; tel(other)=2; email(boat)=a@b; "
              "adr(Home)=Main 1,London,,1000,UK,gb; url(other)=http://x; date(other)=2001-01-01; related(boat)=Byron; im(Home)=Chat/ada");
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

TEST(AddressBookReading, aWholeNameIsNeverAbsent) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (Prefix, First, Middle, Last, Suffix, Organization) VALUES"
                                           "(NULL, NULL, NULL, 'Li', NULL, 'Acme'), ('', 'A', '', 'B', '', NULL), ('', NULL, NULL, NULL, NULL, 'Acme'),"
                                           "(NULL, NULL, NULL, NULL, NULL, NULL), (NULL, ' ', NULL, NULL, NULL, 'Acme')");
    EXPECT_EQ(described(image.contacts()), "pKey=1; completeName=Li; last_name=Li; company=Acme\n"
                                           "pKey=2; completeName=A B; last_name=B; first_name=A; middle_name=; name_title=; name_suffix=\n"
                                           "pKey=3; completeName=Acme; name_title=; company=Acme\npKey=4; completeName=\n"
                                           "pKey=5; completeName= ; first_name= ; company=Acme\n");
}

TEST(AddressBookReading, aTableThatIsMissingIsEmpty) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('Ada'); DROP TABLE ABMultiValue; DROP TABLE ABMultiValueEntry;"
                                           "DROP TABLE ABMultiValueLabel; DROP TABLE ABGroup; DROP TABLE ABGroupMembers");
    EXPECT_EQ(described(*image.contacts().at(0)), "pKey=1; completeName=Ada; first_name=Ada");
}

TEST(AddressBookReading, aColumnThatIsMissingIsAbsent) {
    const TestImage image({"tiny", "CREATE TABLE ABPerson (Last TEXT); INSERT INTO ABPerson VALUES ('Li'); CREATE TABLE ABMultiValue (UID INTEGER PRIMARY KEY, "
                                   "record_id INTEGER, property INTEGER); INSERT INTO ABMultiValue VALUES (1, 1, 3)"});
    EXPECT_EQ(described(*image.contacts().at(0)), "pKey=1; completeName=Li; last_name=Li; tel(other)=~");
}

TEST(AddressBookReading, aDeviceWithoutAnAddressBookHasNoContacts) {
    const TestImage image;
    std::filesystem::remove(image.database());
    EXPECT_EQ(names(image.contacts()), "");
}

TEST(AddressBookReading, everyTextIsValid) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First, Last) VALUES (CAST(x'41FF42' AS TEXT), CAST(x'410042' AS TEXT));"
                                           "INSERT INTO ABPerson (First, Birthday) VALUES (x'C3', 12.5)");
    EXPECT_EQ(described(image.contacts()), "pKey=1; completeName=A�B AB; last_name=AB; first_name=A�B\n"
                                           "pKey=2; completeName=�; first_name=�; birthday=2001-01-01\n");
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
    const TestImage image(newestVersion(), everyField());
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

#include <gtest/gtest.h>

#include <csignal>

#include "tests/device/HardEnds.h"
#include "tests/device/TestDevice.h"
#include "tests/support/Cases.h"

using namespace testdevice;
using device::AccessError;

namespace {

constexpr const char *kEverything =
    "name_title=Dr.; first_name=Ada; middle_name=K.; last_name=Lovelace; name_suffix=II; first_name_yomi=aida; middle_name_yomi=kay; "
    "last_name_yomi=lavleis; nickname=Countess; company=Engines; department=; job=Analyst; birthday=1815-12-10; notes=one\ntwo; "
    "tel(mobile)=+1; tel(boat)=2; tel(WORK)=3; email(Home)=a@b; adr(Home)=Main 1,London,,1000,UK,gb; adr(hut)=~,Alp; "
    "date(Anniversary)=1835-07-08; date(x)=some spring; im(Home)=Chat/ada; url(HomePage)=http://x; related(Spouse)=William";

constexpr const char *kEverythingRead =
    "completeName=Dr. Ada K. Lovelace II; last_name=Lovelace; first_name=Ada; middle_name=K.; name_title=Dr.; name_suffix=II; "
    "first_name_yomi=aida; middle_name_yomi=kay; last_name_yomi=lavleis; nickname=Countess; company=Engines; department=; job=Analyst; "
    "birthday=1815-12-10; notes=one\\ntwo; tel(Mobile)=+1; tel(boat)=2; tel(Work)=3; email(Home)=a@b; "
    "adr(Home)=Main 1,London,,1000,UK,gb; adr(hut)=~,Alp,~,~,~; url(HomePage)=http://x; date(Anniversary)=1835-07-08; "
    "date(x)=some spring; related(Spouse)=William; im(Home)=Chat/ada";

class AddressBookVersionsWritten : public testing::TestWithParam<Version> {};

TEST_P(AddressBookVersionsWritten, aNewContactReadsBackWhole) {
    const TestImage image(GetParam(), "INSERT INTO ABPerson (First) VALUES ('old'); INSERT INTO ABMultiValueLabel (value) VALUES ('boat')");
    ASSERT_TRUE(image.store()->addNewContact_toGroups(contactOf(kEverything), {}));
    const ContactList contacts = image.contacts();
    ASSERT_EQ(names(contacts), "old|Dr. Ada K. Lovelace II");
    EXPECT_EQ(textOf(*contacts[1]), kEverythingRead);
    EXPECT_EQ(image.query("SELECT group_concat(identifier) FROM ABMultiValue WHERE property = 3"), "0,1,2");
    EXPECT_EQ(image.query("SELECT count(*) FROM ABMultiValueLabel WHERE value = 'boat'"), "1");
    EXPECT_EQ(image.query("SELECT Birthday FROM ABPerson WHERE First = 'Ada'"), "-5840035200.0");
    EXPECT_EQ(image.query("SELECT Department IS '' FROM ABPerson"), "0|1");
}

TEST_P(AddressBookVersionsWritten, aRemovedContactLeavesNoRow) {
    const TestImage image(GetParam());
    const auto store = image.store();
    for (const int many : {1, 12}) {   // few and many take different ways
        for (int i = 0; i < many; ++i)
            ASSERT_TRUE(store->addNewContact_toGroups(contactOf(kEverything), {}));
        ASSERT_TRUE(store->addNewContact_toGroups(named("stays"), {}));
        ContactList contacts = image.contacts();
        contacts.pop_back();
        int removed = 0;
        store->deleteContactsOrGroups_callBack(contacts, [&](auto, auto, auto, bool success, bool *) { removed += success; });
        EXPECT_EQ(removed, static_cast<int>(contacts.size()));
        EXPECT_EQ(names(image.contacts()), "stays");
        EXPECT_EQ(image.query("SELECT count(*) FROM ABMultiValue UNION ALL SELECT count(*) FROM ABMultiValueEntry"), "0|0");
    }
}

INSTANTIATE_TEST_SUITE_P(AddressBook, AddressBookVersionsWritten, testing::ValuesIn(versions()),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(AddressBookWriting, triggersDefaultsAndKeysOfARealDeviceAreMet) {
    const TestImage image;
    ASSERT_TRUE(image.store()->addNewContact_toGroups(named("A"), {}));
    ASSERT_TRUE(image.store()->addNewContact_toGroups(named("B"), {}));
    EXPECT_EQ(image.query("SELECT what FROM ABLog"), "+A|+B");
    EXPECT_EQ(image.query("SELECT length(guid) FROM ABPerson"), "36|36");
    EXPECT_EQ(image.query("SELECT count(DISTINCT guid) FROM ABPerson"), "2");
}

class WrittenContact : public testing::TestWithParam<Case> {};

TEST_P(WrittenContact, reads) {
    const TestImage image;
    ASSERT_TRUE(image.store()->addNewContact_toGroups(contactOf(GetParam().parts[0]), {}));
    EXPECT_EQ(textOf(*image.contacts().at(0)), GetParam().parts[1]);
}

INSTANTIATE_TEST_SUITE_P(Samples, WrittenContact, testing::ValuesIn(casesOf("cases/storedContacts.txt")), nameOfCase);

TEST(AddressBookWriting, aNewContactJoinsItsGroupsByRowOrName) {
    const TestImage image(newestVersion(), "INSERT INTO ABGroup (ROWID, Name) VALUES (4, 'Friends'), (5, 'Work')");
    auto byRow = make<ContactGroupInfo>(), byName = make<ContactGroupInfo>(), unknown = make<ContactGroupInfo>();
    byRow->storeKey = 4, byName->groupName = "Work", unknown->groupName = "Nobody";
    EXPECT_TRUE(image.store()->addNewContact_toGroups(named("A"), {byRow, byName, byRow}));
    EXPECT_EQ(image.query("SELECT group_id || ':' || member_id FROM ABGroupMembers"), "4:1|5:1");
    EXPECT_FALSE(image.store()->addNewContact_toGroups(named("B"), {unknown}));
    EXPECT_EQ(names(image.contacts()), "A");
}

// ---------------------------------------------------------------- callbacks

struct Calls {
    std::string log;
    std::int64_t stopAt = -1;
    CContactManagerImpl::AddProgress progress() {
        return [this](std::int64_t index, std::int64_t total, std::int32_t result) {
            log += std::to_string(index) + "/" + std::to_string(total) + ":" + std::to_string(result) + " ";
            return index == stopAt ? 1 : 0;
        };
    }
};

std::shared_ptr<device::contacts::AddressBookStore> inGroupsOf(const TestImage &image, std::int64_t contacts) {
    const auto store = image.store();
    device::contacts::AddressBookStore::GroupLimits limits;
    limits.contacts = contacts;
    limits.now = [] { return std::chrono::steady_clock::time_point(); };
    store->setGroupLimits(limits);
    return store;
}

ContactList letters(int count) {
    ContactList list;
    for (int i = 0; i < count; ++i)
        list.push_back(named(std::string(1, static_cast<char>('a' + i)).c_str()));
    return list;
}

TEST(AddressBookWriting, callsComeAfterTheirGroupAndOnceMoreAfterAStop) {
    const struct {
        int contacts;
        std::int64_t stopAt;
        const char *calls, *written;
    } kRows[] = {{5, -1, "0/5:0 1/5:0 2/5:0 3/5:0 4/5:0 ", "a|b|c|d|e"},
                 {5, 2, "0/5:0 1/5:0 2/5:0 3/5:0 ", "a|b|c|d"},   // the first of a group
                 {5, 1, "0/5:0 1/5:0 2/5:-1 ", "a|b"},            // the last of a group
                 {5, 4, "0/5:0 1/5:0 2/5:0 3/5:0 4/5:0 ", "a|b|c|d|e"},
                 {0, -1, "0/0:-1 ", ""}};
    for (const auto &row : kRows) {
        const TestImage image;
        Calls calls{.log = {}, .stopAt = row.stopAt};
        inGroupsOf(image, 2)->addNewContacts_toGroups_progress(letters(row.contacts), {}, calls.progress());
        EXPECT_EQ(calls.log, row.calls);
        EXPECT_EQ(names(image.contacts()), row.written);
    }
}

TEST(AddressBookWriting, aGroupEndsAfterItsTime) {
    const TestImage image;
    const auto store = image.store();
    device::contacts::AddressBookStore::GroupLimits limits;
    std::chrono::milliseconds now{0};
    limits.now = [&now] { return std::chrono::steady_clock::time_point(now += std::chrono::milliseconds(60)); };
    store->setGroupLimits(limits);
    std::string committed;
    store->addNewContacts_toGroups_progress(letters(4), {}, [&](std::int64_t, std::int64_t, std::int32_t) {
        committed += image.query("SELECT count(*) FROM ABPerson") + " ";
        return 0;
    });
    EXPECT_EQ(committed, "2 2 4 4 ");
}

TEST(AddressBookWriting, oneBadContactNeverStopsTheRest) {
    const TestImage image(newestVersion(), "CREATE TRIGGER bad BEFORE INSERT ON ABMultiValue WHEN NEW.value = 'bad' BEGIN SELECT raise(ABORT, 'no such number'); END");
    ContactList list = letters(3);
    list[1]->mutable_phone_numbers() = {{"Home", "1"}, {"new label", "bad"}};
    list[2]->mutable_phone_numbers() = {{"new label", "2"}};
    list.insert(list.begin(), nullptr);
    Calls calls;
    const auto store = image.store();
    store->addNewContacts_toGroups_progress(list, {}, calls.progress());
    EXPECT_EQ(calls.log, "0/4:-1 1/4:0 2/4:-1 3/4:0 ");
    EXPECT_EQ(names(image.contacts()), "a|c");
    EXPECT_EQ(textOf(*image.contacts()[1]), "completeName=c; first_name=c; tel(new label)=2");   // the label went with the bad contact
    EXPECT_EQ(image.query("SELECT count(*) FROM ABMultiValue"), "1");
}

TEST(AddressBookWriting, aDeviceThatGoesAwayFailsWhatIsLeft) {
    const TestImage image;
    Calls calls;
    const auto progress = calls.progress();
    inGroupsOf(image, 2)->addNewContacts_toGroups_progress(letters(5), {}, [&](std::int64_t index, std::int64_t total, std::int32_t result) {
        if (index == 1)
            std::filesystem::remove_all(image.path());
        return progress(index, total, result);
    });
    EXPECT_EQ(calls.log, "0/5:0 1/5:0 2/5:-1 3/5:-1 4/5:-1 ");
    EXPECT_FALSE(std::filesystem::exists(image.path()));
}

TEST(AddressBookWriting, aSecondWriterIsRefusedAndAReaderIsNot) {
    const TestImage image;
    const auto store = image.store();
    bool second = true;
    std::string seen;
    store->addNewContacts_toGroups_progress(letters(1), {}, [&](std::int64_t, std::int64_t, std::int32_t) {
        const auto other = image.store();
        second = other->addNewContact_toGroups(named("second"), {});
        EXPECT_EQ(other->failures().first()->kind, AccessError::Kind::locked);
        seen = names(image.contacts());
        return 0;
    });
    EXPECT_FALSE(second);
    EXPECT_EQ(seen, "a");
    EXPECT_TRUE(store->addNewContact_toGroups(named("b"), {}));
}

// ---------------------------------------------------------------- hard ends

// Copies of an image whose writer dies at its first, second, ... write, until one comes through; the number of the copies.
int killedAtEveryWrite(const TestImage &start, const std::function<bool(const TestImage &)> &write, const std::function<void(const TestImage &)> &look) {
    int kills = 0;
    for (int status = 0; status != 7; ++kills) {
        const TestImage image;
        std::filesystem::copy(start.path(), image.path(), std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
        status = inChild([&] {
            dieAtCall(kills + 1);
            return write(image) ? 7 : 8;
        });
        EXPECT_TRUE(status == 7 || status == 128 + SIGKILL) << status;
        SCOPED_TRACE(kills);
        look(image);
        if (status == 8 || testing::Test::HasFailure())
            break;
    }
    return kills;
}

TEST(AddressBookWriting, killedAtAnyWriteHoldsEachContactWithItsPictureOrNot) {
    const std::string picture = "\xFF\xD8\xFF" + std::string(5'000, 'p');
    const auto pictured = [&] { return contactOf(kEverything + ("; image=" + picture)); };
    const TestImage start;
    start.execImages("CREATE TABLE ABFullSizeImage (record_id INTEGER PRIMARY KEY, data BLOB)");
    int halves = 0;
    const auto add = [&](const TestImage &image) {
        inGroupsOf(image, 1)->addNewContacts_toGroups_progress({pictured(), pictured()}, {}, {});
        return true;
    };
    const int kills = killedAtEveryWrite(start, add, [&](const TestImage &image) {
        const ContactList contacts = image.contacts();
        halves += contacts.size() == 1;
        for (const auto &c : contacts) {
            EXPECT_EQ(textOf(*c), kEverythingRead);
            ASSERT_TRUE(c->image_data() && c->image_data()->data());
            EXPECT_EQ(c->image_data()->data()->bytes(), picture);
        }
        EXPECT_TRUE(image.store()->addNewContact_toGroups(named("after"), {}));
    });
    EXPECT_GT(kills, 30);
    EXPECT_GT(halves, 0);
}

TEST(AddressBookWriting, aFullDiskFailsWithAMessageAndChangesNothing) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('old')");
    EXPECT_EQ(inChild([&] {
                  limitFileSize(150'000);
                  ContactList list = letters(3);
                  list[1]->setNotes(std::string(400'000, 'n'));
                  Calls calls;
                  const auto store = image.store();
                  store->addNewContacts_toGroups_progress(list, {}, calls.progress());
                  const auto failure = store->failures().first();
                  return failure && calls.log.starts_with("0/3:") && calls.log.find("2/3:") != std::string::npos &&
                                 calls.log.find("1/3:-1") != std::string::npos
                             ? 5
                             : 6;
              }), 5);
    for (const auto &c : image.contacts())
        EXPECT_TRUE(c->notes().isNil());
    EXPECT_EQ(names(image.contacts()).substr(0, 3), "old");
}

TEST(AddressBookWriting, aFolderWithoutWritePermissionFailsWithAMessageAndChangesNothing) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('old')");
    forbidWriting(image.path());
    const std::string before = pictureOf(image.path());
    EXPECT_EQ(inChild([&] {
                  if (!becomeNobody())
                      return 9;
                  const auto store = image.store();
                  store->getContactDataFromAddressList();
                  if (names(store->contactArray()) != "old")
                      return 1;
                  if (store->addNewContact_toGroups(named("new"), {}))
                      return 2;
                  return store->failures().first()->kind == AccessError::Kind::readOnly ? 5 : 6;
              }), 5);
    EXPECT_EQ(pictureOf(image.path()), before);
}

// ---------------------------------------------------------------- changing

TEST(AddressBookEditing, touchesOnlyRowsThatChanged) {
    const TestImage image;
    const auto store = image.store();
    ASSERT_TRUE(store->addNewContact_toGroups(contactOf(kEverything), {}));
    image.exec("CREATE TABLE Touched (what TEXT);"
               "CREATE TRIGGER t1 AFTER UPDATE ON ABPerson BEGIN INSERT INTO Touched SELECT 'person' WHERE OLD.ModificationDate = NEW.ModificationDate; END;"
               "CREATE TRIGGER t2 AFTER UPDATE ON ABMultiValue BEGIN INSERT INTO Touched VALUES ('value ' || OLD.value); END;"
               "CREATE TRIGGER t3 AFTER DELETE ON ABMultiValue BEGIN INSERT INTO Touched VALUES ('gone ' || OLD.value); END;"
               "CREATE TRIGGER t4 AFTER INSERT ON ABMultiValue BEGIN INSERT INTO Touched VALUES ('new ' || NEW.value || ' ' || NEW.identifier); END;"
               "CREATE TRIGGER t5 AFTER UPDATE ON ABMultiValueEntry BEGIN INSERT INTO Touched VALUES ('part ' || OLD.value); END;"
               "UPDATE ABPerson SET ModificationDate = 1");
    ContactList contacts = image.contacts();
    EXPECT_EQ(store->editContacts_onGroups(contacts, {}), 1);
    EXPECT_EQ(image.query("SELECT what FROM Touched"), "");
    EXPECT_EQ(image.query("SELECT ModificationDate FROM ABPerson"), "1");

    ZpContactDataInfo &ada = *contacts.at(0);
    ada.setFirst_name("Augusta");
    auto &phones = ada.mutable_phone_numbers();
    phones.erase(phones.begin() + 1);
    phones[0].phone_number = "+111";
    phones.push_back({"Home", nullptr});   // a row of the editor that stayed empty
    phones.push_back({"Home", "444"});
    ada.mutable_addresses()[0].city = "Paris";
    ada.mutable_addresses()[0].country_code = nullptr;
    EXPECT_EQ(store->editContacts_onGroups(contacts, {}), 1);
    EXPECT_EQ(image.query("SELECT what FROM Touched ORDER BY what"), "gone 2|new 444 3|part London|person|value +1");
    EXPECT_EQ(textOf(*image.contacts().at(0)),
              "completeName=Dr. Augusta K. Lovelace II; last_name=Lovelace; first_name=Augusta; middle_name=K.; name_title=Dr.; name_suffix=II; "
              "first_name_yomi=aida; middle_name_yomi=kay; last_name_yomi=lavleis; nickname=Countess; company=Engines; department=; job=Analyst; "
              "birthday=1815-12-10; notes=one\\ntwo; tel(Mobile)=+111; tel(Work)=3; tel(Home)=444; email(Home)=a@b; "
              "adr(Home)=Main 1,Paris,,1000,UK; adr(hut)=~,Alp,~,~,~; url(HomePage)=http://x; date(Anniversary)=1835-07-08; "
              "date(x)=some spring; related(Spouse)=William; im(Home)=Chat/ada");
}

TEST(AddressBookEditing, aNewWholeNameOfANamelessContactIsItsFirstName) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (Organization) VALUES ('Acme')");
    ContactList contacts = image.contacts();
    contacts.at(0)->setCompleteName("Ada Lovelace");
    EXPECT_EQ(image.store()->editContacts_onGroups(contacts, {}), 1);
    EXPECT_EQ(textOf(*image.contacts().at(0)), "completeName=Ada Lovelace; first_name=Ada Lovelace; company=Acme");
}

TEST(AddressBookEditing, aPictureStaysGoesOrIsReplaced) {
    const TestImage image;
    const auto store = image.store();
    const auto pictured = contactOf("first_name=A; image=\xFF\xD8\xFF""1");
    ASSERT_TRUE(store->addNewContact_toGroups(pictured, {}));
    const auto bytes = [&] {
        const auto picture = image.contacts().at(0)->image_data();
        return picture ? std::string(picture->data()->bytes()) : "none";
    };
    ContactList contacts = image.contacts();
    store->editContacts_onGroups(contacts, {});
    EXPECT_EQ(bytes(), "\xFF\xD8\xFF""1");
    for (const char *name : {"new.jpg", "icon_list_user.png"}) {   // the placeholder is never stored
        write(image.path() / name, "\xFF\xD8\xFF" + std::string(name));
        contacts[0]->setImagePath((image.path() / name).string());
        store->editContacts_onGroups(contacts, {});
        EXPECT_EQ(bytes(), "\xFF\xD8\xFFnew.jpg");
    }
    contacts[0]->setImage_data(nullptr);
    contacts[0]->setImagePath(nullptr);
    store->editContacts_onGroups(contacts, {});
    EXPECT_EQ(bytes(), "none");
}

TEST(AddressBookEditing, aPictureThatNobodyCanConvertIsStoredAsItIs) {
    const TestImage image;
    ASSERT_TRUE(image.store()->addNewContact_toGroups(contactOf("image=BMP?"), {}));
    EXPECT_EQ(image.contacts().at(0)->image_data()->data()->bytes(), "BMP?");
}

TEST(AddressBookEditing, aContactOfNoDeviceCannotBeChanged) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('old')");
    for (const char *contact : {"pKey=2", "pKey=", "pKey=1x", "pKey=-", "pKey=99999999999999999999", "first_name=x"})
        EXPECT_EQ(image.store()->editContacts_onGroups({contactOf(contact)}, {}), 0) << contact;
    EXPECT_EQ(names(image.contacts()), "old");
}

// ---------------------------------------------------------------- merging and removing

// Every column of every row that belongs to a contact, its time of change apart.
std::vector<std::string> rowsOf(const TestImage &image, int record) {
    const std::string id = std::to_string(record);
    const std::pair<const char *, std::string> kTables[] = {
        {"ABPerson", "ROWID = " + id},
        {"ABMultiValue", "record_id = " + id},
        {"ABMultiValueEntry", "parent_id IN (SELECT UID FROM ABMultiValue WHERE record_id = " + id + ")"},
        {"ABGroupMembers", "member_id = " + id}};
    std::vector<std::string> rows;
    for (const auto &[table, condition] : kTables) {
        const std::string columns = image.query("SELECT group_concat('quote(' || name || ')', \" || ',' || \") FROM pragma_table_info('" +
                                                std::string(table) + "') WHERE name != 'ModificationDate'");
        const auto count = std::stoi(image.query("SELECT count(*) FROM " + std::string(table) + " WHERE " + condition));
        for (int row = 0; row < count; ++row)
            rows.push_back(image.query("SELECT '" + std::string(table) + "' || " + columns + " FROM " + table + " WHERE " + condition +
                                       " ORDER BY rowid LIMIT 1 OFFSET " + std::to_string(row)));
    }
    std::ranges::sort(rows);
    return rows;
}

// Three contacts of one person, each with a number of its own beside all that they share, and a stranger; groups.
struct Triplets {
    TestImage image{versions().back(), "INSERT INTO ABGroup (ROWID, Name) VALUES (1, 'G'), (2, 'H');"};
    std::shared_ptr<device::contacts::AddressBookStore> store = image.store();
    ContactList people;

    Triplets() {
        for (const char *phone : {"; tel(Home)=71", "; tel(Home)=72", "; tel(Home)=73"})
            EXPECT_TRUE(store->addNewContact_toGroups(contactOf(std::string(kEverything) + phone), {}));
        EXPECT_TRUE(store->addNewContact_toGroups(named("stranger"), {}));
        image.exec("INSERT INTO ABGroupMembers (group_id, member_type, member_id) VALUES (1, 0, 1), (2, 0, 1), (1, 0, 2), (2, 0, 3), (2, 0, 4)");
        people = image.contacts();
        people.pop_back();
        // as the merge window does: what is equal comes from whoever stands first
        auto &phones = people[1]->mutable_phone_numbers();
        phones = people[0]->phone_numbers();
        for (const int other : {1, 2})
            phones.push_back({"Home", other == 1 ? "72" : "73", people[static_cast<std::size_t>(other)]->phone_numbers().back().storeKey});
        people[1]->mutable_emails() = people[0]->emails();
    }
};

TEST(AddressBookMerging, touchesNothingOfTheSurvivorButWhatCameToIt) {
    Triplets world;
    const auto survivor = rowsOf(world.image, 2), stranger = rowsOf(world.image, 4);
    ASSERT_GT(survivor.size(), 12u);
    ASSERT_TRUE(world.store->combineRepeatContacts_newContact_toGroup(world.people, world.people[1], {}));
    const auto now = rowsOf(world.image, 2);
    std::vector<std::string> came;
    std::ranges::set_difference(now, survivor, std::back_inserter(came));
    EXPECT_TRUE(std::ranges::includes(now, survivor));
    ASSERT_EQ(came.size(), 3u);   // a group and two numbers
    EXPECT_TRUE(came[0].starts_with("ABGroupMembers"));
    EXPECT_NE(came[1].find("'71'"), std::string::npos);
    EXPECT_NE(came[2].find("'73'"), std::string::npos);
    const std::string merged = textOf(*world.image.contacts().at(0));
    EXPECT_NE(merged.find("tel(Mobile)=+1; tel(boat)=2; tel(Work)=3; tel(Home)=72; tel(Home)=71; tel(Home)=73; email"), std::string::npos) << merged;
    EXPECT_EQ(world.image.query("SELECT group_id || ':' || member_id FROM ABGroupMembers ORDER BY 1"), "1:2|2:2|2:4");
    EXPECT_EQ(rowsOf(world.image, 4), stranger);
    EXPECT_EQ(rowsOf(world.image, 1).size() + rowsOf(world.image, 3).size(), 0u);
}

TEST(AddressBookMerging, killedAtAnyWriteHasHappenedOrNot) {
    const auto state = [](const TestImage &image) {
        const std::string people = described(image.contacts());   // first, since a read sets right what a writer left half done
        return people + image.query("SELECT group_id || ':' || member_id FROM ABGroupMembers ORDER BY 1");
    };
    const Triplets world, sample;
    ASSERT_TRUE(sample.store->combineRepeatContacts_newContact_toGroup(sample.people, sample.people[1], {}));
    const std::string before = state(world.image), after = state(sample.image);
    ASSERT_NE(before, after);
    int merged = 0;
    const auto merge = [&](const TestImage &image) {
        return image.store()->combineRepeatContacts_newContact_toGroup(world.people, world.people[1], {});
    };
    const int kills = killedAtEveryWrite(world.image, merge, [&](const TestImage &image) {
        const std::string now = state(image);
        EXPECT_TRUE(now == before || now == after) << now;
        merged += now == after;
    });
    EXPECT_GT(kills, 5);
    EXPECT_GT(merged, 0);
}

TEST(AddressBookMerging, isAllOrNothing) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('a'), ('b'), ('c');"
                                           "CREATE TRIGGER stuck BEFORE DELETE ON ABPerson WHEN OLD.First = 'c' BEGIN SELECT raise(ABORT, 'stuck'); END");
    const ContactList contacts = image.contacts();
    contacts[0]->setFirst_name("merged");
    const auto store = image.store();
    EXPECT_FALSE(store->combineRepeatContacts_newContact_toGroup(contacts, contacts[0], {}));
    EXPECT_NE(store->failures().first()->text.find("stuck"), std::string::npos);
    EXPECT_EQ(names(image.contacts()), "a|b|c");
}

TEST(AddressBookRemoving, tellsEachContactAndStopsAfterItsGroup) {
    const TestImage image(newestVersion(), "INSERT INTO ABPerson (First) VALUES ('a'), ('b'), ('c'), ('d')");
    ContactList contacts = image.contacts();
    contacts.insert(contacts.begin() + 1, named("unknown"));
    std::string log;
    inGroupsOf(image, 3)->deleteContactsOrGroups_callBack(contacts, [&](std::int64_t index, std::int64_t total, auto c, bool success, bool *stop) {
        log += std::to_string(index) + "/" + std::to_string(total) + (c == contacts[static_cast<std::size_t>(index)] ? "" : "?") + (success ? "+ " : "- ");
        *stop = index == 1;
    });
    EXPECT_EQ(log, "0/5+ 1/5- 2/5+ ");
    EXPECT_EQ(names(image.contacts()), "c|d");
}

TEST(AddressBookStore, asksTheDeviceEachTimeWhetherTheCloudHasTheData) {
    const TestImage image;
    const auto store = image.store();
    EXPECT_EQ(store->isDeviceiCloudOpen(0), 0);
    const auto tree = image.open();
    device::PropertyList properties = tree->properties();
    properties.setFlag("CloudContacts", true);
    properties.setFlag("CloudMessages", true);
    {
        const device::WriterLock lock = tree->lockForWriting();
        tree->setProperties(lock, properties);
    }
    EXPECT_NE(store->isDeviceiCloudOpen(0), 0);
    EXPECT_EQ(store->isDeviceiCloudOpen(2), 0);
    EXPECT_NE(store->isDeviceiCloudOpen(4), 0);
}

}  // namespace

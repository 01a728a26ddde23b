#include <gtest/gtest.h>

#include "device/contacts/AddressBookStore.h"
#include "device/contacts/CardText.h"
#include "device/contacts/TableText.h"
#include "tests/device/HardEnds.h"
#include "tests/device/TestDevice.h"
#include "tests/support/Cases.h"

namespace {

namespace fs = std::filesystem;
using namespace device::contacts;

// Without the frame that every card has, and the name where there is none.
std::string bodyOf(const ZpContactDataInfo &contact) {
    std::string text;
    appendCard(text, contact);
    const std::string front = "BEGIN:VCARD\r\nVERSION:3.0\r\n", back = "END:VCARD\r\n", noName = "N:;;;;\r\nFN:\r\n";
    EXPECT_TRUE(text.starts_with(front) && text.ends_with(back)) << text;
    text = text.substr(front.size(), text.size() - front.size() - back.size());
    return text.starts_with(noName) ? text.substr(noName.size()) : text;
}

class WrittenCard : public testing::TestWithParam<Case> {};

TEST_P(WrittenCard, hasTheseLines) {
    const auto contact = contactOf("completeName=");
    fill(*contact, GetParam().parts[0]);
    EXPECT_EQ(bodyOf(*contact), withReturns(GetParam().parts[1]));
}

INSTANTIATE_TEST_SUITE_P(Samples, WrittenCard, testing::ValuesIn(casesOf("cases/writtenCards.txt")), nameOfCase);

TEST(PictureOfACard, isItsOwnAndNeverThePlaceholder) {
    const auto contact = contactOf("completeName=");
    const auto image = NSImage::withData(NSData::of("\xFF\xD8\xFF" "abcd"));
    contact->setImage_data(image);
    EXPECT_EQ(bodyOf(*contact), "PHOTO;ENCODING=b;TYPE=JPEG:/9j/YWJjZA==\r\n");
    image->setName("icon_list_user");
    EXPECT_EQ(bodyOf(*contact), "");
}

// ---------------------------------------------------------------- table

std::string table(const ContactList &contacts) {
    const TableText made(contacts);
    std::string text;
    made.appendHeading(text);
    for (const auto &contact : contacts)
        made.appendRow(text, *contact);
    return text;
}

constexpr const char *kPlainHeading =
    "Given Name,Given Name Yomi,Additional Name,Additional Name Yomi,Family Name,Family Name Yomi,Nickname,Name Prefix,Name Suffix,"
    "Birthday,Notes,Organization 1 - Name,Organization 1 - Department,Organization 1 - Title,";

TEST(Table, hasANumberAtLeastAndALastColumnWithoutTexts) {
    EXPECT_EQ(table(contactsOf("first_name=Ann")),
              kPlainHeading + std::string("Phone 1 - Type,Phone 1 - Value,End of Row\r\nAnn,,,,,,,,,,,,,,,,\r\n"));
}

TEST(Table, numbersTheGroupsOfTheRichestContact) {
    EXPECT_EQ(table(contactsOf("tel(home)=1; tel(home)=; tel(~)=2; im(chat)=AIM/joe\nadr(Home)=S,T,R,P,C,de")),
              kPlainHeading + std::string("Phone 1 - Type,Phone 1 - Value,Phone 2 - Type,Phone 2 - Value,Address 1 - Type,"
                                          "Address 1 - Postal Code,Address 1 - Country,Address 1 - Region,Address 1 - City,Address 1 - Street,"
                                          "IM 1 - Type,IM 1 - Service,IM 1 - Value,End of Row\r\n"
                                          ",,,,,,,,,,,,,,home,1,other,2,,,,,,,chat,AIM,joe,\r\n"
                                          ",,,,,,,,,,,,,,,,,,Home,P,C,R,T,S,,,,\r\n"));
}

TEST(Table, givesAnInstantMessageTextWhereAPartIsMissing) {
    const std::string text = table(contactsOf("im(~)=~/joe"));
    EXPECT_TRUE(text.ends_with(",,,other,\\n,joe,\r\n")) << text;
}

TEST(Table, quotesAndEscapesWhatTheReaderTakesBack) {
    const std::string text = table({contactOf("first_name=a,b; middle_name=\"; last_name=c\\d; notes=1\n2\r\n3\u20284\u00E4; tel(a,\"\\b\n)=1,\n\"2")});
    EXPECT_EQ(text.substr(text.find("\r\n") + 2),
              "\"a,b\",,\"\"\"\",,c\\\\d,,,,,,1\\n2\\r\\n3\\n4\u00E4,,,,a，＂＼b ,\"1, \"\"2\",\r\n");
}

// ---------------------------------------------------------------- the store

using Writer = void (*)(AddressBookStore &, const ContactList &, const NSString &);
constexpr Writer kWriters[] = {
    [](AddressBookStore &store, const ContactList &people, const NSString &path) { store.exportContactsToVCFFile_toPath(people, path); },
    [](AddressBookStore &store, const ContactList &people, const NSString &path) {
        store.exportContactsToCSVFileFromArray_toPath_callBack(people, path, {});
    },
};

class NoTree : public testing::Test {
protected:
    [[nodiscard]] NSString path(const char *name) const { return NSString((folder_.path() / name).string()); }
    [[nodiscard]] std::string bytes(const char *name) const { return readFile(folder_.path() / name); }
    [[nodiscard]] auto files() const { return std::distance(fs::directory_iterator(folder_.path()), fs::directory_iterator()); }
    // The result and the count that the table's writer tells.
    [[nodiscard]] std::string tableTold(const char *name) {
        std::string told;
        store_->exportContactsToCSVFileFromArray_toPath_callBack(people_, path(name), [&](std::int32_t result, std::int64_t count) {
            told += std::to_string(result) + " " + std::to_string(count);
        });
        return told;
    }
    TempFolder folder_;
    std::shared_ptr<AddressBookStore> store_ = AddressBookStore::open(nullptr);
    const ContactList people_ = contactsOf("completeName=; first_name=Ann\ncompleteName=; first_name=Bob");
};

TEST_F(NoTree, writesCardsAndTablesOverWhatWasThere) {
    writeFile(folder_.path() / "a.vcf", "old");
    store_->exportContactsToVCFFile_toPath(people_, path("a.vcf"));
    EXPECT_EQ(bytes("a.vcf"), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;Ann;;;\r\nFN:\r\nEND:VCARD\r\n"
                              "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;Bob;;;\r\nFN:\r\nEND:VCARD\r\n");
    EXPECT_EQ(tableTold("a.csv"), "0 2");
    EXPECT_TRUE(bytes("a.csv").ends_with("Ann,,,,,,,,,,,,,,,,\r\nBob,,,,,,,,,,,,,,,,\r\n"));
    EXPECT_FALSE(store_->failures().first());
}

// The reader takes 102,399 bytes of a row at once; an even number of bytes in front of so many of two puts the cut into one.
TEST_F(NoTree, tellsOfATableThatItsReaderCutsWithinACharacter) {
    std::string notes;
    for (int i = 0; i < 60000; ++i)
        notes += "ä";
    for (const auto &[name, reason] : {std::pair("Ann", ""), std::pair("An", "the row of An has more than 102,399 bytes")}) {
        people_[1]->setFirst_name(name), people_[1]->setCompleteName(name), people_[1]->setNotes(notes);
        EXPECT_EQ(tableTold("long.csv"), "0 2");
        EXPECT_EQ(store_->failures().first().value_or(device::Failure{}).text.substr(0, 41), reason);
    }
}

TEST_F(NoTree, aFailureLeavesTheOldFile) {
    writeFile(folder_.path() / "a.vcf", "old");
    store_->exportContactsToVCFFile_toPath({people_[0], nullptr}, path("a.vcf"));
    EXPECT_TRUE(store_->failures().first());
    EXPECT_EQ(bytes("a.vcf"), "old");
    EXPECT_EQ(tableTold("none/a.csv"), "-1 0");
    EXPECT_EQ(files(), 1);
}

// Writers that cannot finish, over an old file and under a new name; the disk's limit and the person's rights are a child's.
class Hindered : public NoTree {
protected:
    // Of the export in a child after `hinder`: 0 where it failed and the folder holds the old file alone.
    int left(const std::function<bool()> &hinder) {
        writeFile(folder_.path() / "old", "old");
        fs::permissions(folder_.path() / "old", fs::perms(0744));
        return testdevice::inChild([&] {
            if (!hinder())
                return 9;
            for (const Writer write : kWriters)
                for (const char *name : {"old", "new"}) {
                    write(*store_, people_, path(name));
                    const auto failure = store_->failures().first();
                    if (!failure || bytes("old") != "old")
                        return 1;
                    if (!failure->text.starts_with(path(name).str() + ": "))
                        return 3;
                    if (files() != 1)
                        return 2;
                }
            return 0;
        });
    }
};

TEST_F(Hindered, byAFullDisk) {
    EXPECT_EQ(left([] {
                  testdevice::limitFileSize(40);   // the second write call meets it, too
                  return true;
              }), 0);
}

TEST_F(Hindered, byAFolderWithoutWritePermission) {
    fs::permissions(folder_.path(), fs::perms(0555));
    EXPECT_EQ(left(testdevice::becomeNobody), 0);
    fs::permissions(folder_.path(), fs::perms::owner_all);
}

}  // namespace

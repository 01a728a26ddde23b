#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "device/contacts/AddressBookStore.h"
#include "device/contacts/CardText.h"
#include "device/contacts/TableText.h"
#include "tests/device/TestDevice.h"

namespace {

namespace fs = std::filesystem;
using namespace device::contacts;
using Change = void (*)(ZpContactDataInfo &);

std::shared_ptr<ZpContactDataInfo> contact(Change change) {
    auto made = make<ZpContactDataInfo>();
    made->setCompleteName("");
    change(*made);
    return made;
}

// Without the frame that every card has.
std::string card(Change change) {
    std::string text;
    appendCard(text, *contact(change));
    const std::string front = "BEGIN:VCARD\r\nVERSION:3.0\r\n", back = "END:VCARD\r\n";
    EXPECT_TRUE(text.starts_with(front) && text.ends_with(back)) << text;
    text = text.substr(front.size(), text.size() - front.size() - back.size());
    const std::string noName = "N:;;;;\r\nFN:\r\n";
    return text.starts_with(noName) ? text.substr(noName.size()) : text;
}

struct Row {
    const char *name;
    Change change;
    const char *lines;
};
class Card : public testing::TestWithParam<Row> {};

TEST_P(Card, hasTheseLines) { EXPECT_EQ(card(GetParam().change), GetParam().lines); }

using C = ZpContactDataInfo;
INSTANTIATE_TEST_SUITE_P(
    Fields, Card,
    testing::Values(
        Row{"nothing", [](C &) {}, ""},
        Row{"emptyTextsAreLeftOut", [](C &c) { c.setNotes(""), c.setNickname(""), c.mutable_phone_numbers() = {{"home", ""}, {"home", NSString()}}; }, ""},
        Row{"names",
            [](C &c) {
                c.setLast_name("Doe"), c.setFirst_name("Ann"), c.setMiddle_name("B."), c.setName_title("Dr"), c.setName_suffix("Jr");
                c.setCompleteName("Dr Ann B. Doe, Jr; x\\y");
            },
            "N:Doe;Ann;B.;Dr;Jr\r\nFN:Dr Ann B. Doe\\, Jr\\; x\\\\y\r\n"},
        Row{"aNameThatWouldEndItsPart", [](C &c) { c.setLast_name("a;b:c\r\nd"), c.setCompleteName("x"); },
            "N:a；b：c d;;;;\r\nFN:x\r\n"},
        Row{"readings",
            [](C &c) { c.setFirst_name_yomi("a"), c.setMiddle_name_yomi("b"), c.setLast_name_yomi("c"); },
            "X-PHONETIC-FIRST-NAME:a\r\nX-PHONETIC-MIDDLE-NAME:b\r\nX-PHONETIC-LAST-NAME:c\r\n"},
        Row{"work", [](C &c) { c.setNickname("n"), c.setDepartment("d;e"), c.setJob_title("t"), c.setBirthday("2001-02-03"); },
            "NICKNAME:n\r\nORG:;d；e\r\nTITLE:t\r\nBDAY;VALUE=date:2001-02-03\r\n"},
        Row{"note", [](C &c) { c.setNotes("a\\n\nb, c; END:VCARD NOTE: d\r"); },
            "NOTE:a\\\\n\\nb, c; END:ＶCARD NOTE： d\\r\r\n"},
        Row{"numbers",
            [](C &c) {
                c.mutable_phone_numbers() = {{"Mobile", "+49 30"}, {NSString(), "1:2"}, {"a:b;c=d", "3"}};
                c.mutable_emails() = {{"Work", "a@b"}};
            },
            "TEL;TYPE=Mobile:+49 30\r\nTEL;TYPE=other:1：2\r\nTEL;TYPE=a：b；c＝d:3\r\nEMAIL;type=INTERNET;type=Work:a@b\r\n"},
        Row{"instantMessages", [](C &c) { c.mutable_ims() = {{"home", "AIM", "joe:TYPE=x"}, {"home", "ICQ", ""}}; },
            "IMPP;X-SERVICE-TYPE=AIM;TYPE=home:x-apple:joe：TYPE＝x\r\n"},
        Row{"urls", [](C &c) { c.mutable_urls() = {{"HomePage", "http://x.org/a;b"}, {"Blog", "x.org"}, {"", "http://x:80"}}; },
            "URL;TYPE=HomePage:http://x.org/a;b\r\nitem1.URL:x.org\r\nitem1.X-ABLabel:_$!<Blog>!$_\r\n"
            "item2.URL:http://x:80\r\nitem2.X-ABLabel:_$!<other>!$_\r\n"},
        Row{"addresses",
            [](C &c) {
                ZpContactAddressDataInfo full, one, none;
                full = {"Home", "1 A\nB", "C", "D", "E", "F", "de"};
                one.city = "x.TEL;y";
                none.type = "Work";
                c.mutable_addresses() = {full, one, none};
            },
            "item1.ADR;TYPE=Home:;;1 A B;C;D;E;F\r\nitem1.X-ABADR:de\r\nitem2.ADR;TYPE=other:;;;x．TEL；y;;;\r\n"},
        Row{"people", [](C &c) { c.mutable_relatednames() = {{"Son", "Tim"}}, c.mutable_dates() = {{"Anniversary", "2001-01-01"}}; },
            "item1.X-ABRELATEDNAMES:Tim\r\nitem1.X-ABLabel:_$!<Son>!$_\r\nitem2.X-ABDATE:2001-01-01\r\nitem2.X-ABLabel:_$!<Anniversary>!$_\r\n"},
        Row{"wordsThatTheReaderLooksFor",
            [](C &c) {
                c.setNickname("NICKNAME:Bo"), c.setCompany_name("ORG:x"), c.setJob_title("a TITLE:b"), c.setBirthday("BDAY;VALUE=date:1");
                c.mutable_phone_numbers() = {{"END", "VCARD"}, {"a", "1TEL;2"}};
                c.mutable_emails() = {{"b", "EMAIL;x@y"}};
                c.mutable_urls() = {{"c", "http://x?URL;TYPE=d"}, {"e", "x.TEL;TYPE=pref:.URL:1"}};
                c.mutable_relatednames() = {{".EMAIL", "a.X-ABDATE"}};
            },
            "NICKNAME:NICKNAME：Bo\r\nORG:ORG：x;\r\nTITLE:a TITLE：b\r\nBDAY;VALUE=date:BDAY;VALUE=date：1\r\n"
            "TEL;TYPE=END:ＶCARD\r\nTEL;TYPE=a:1TEL；2\r\nEMAIL;type=INTERNET;type=b:EMAIL；x@y\r\n"
            "URL;TYPE=c:http://x?URL;TYPE＝d\r\nitem1.URL:x．TEL；TYPE=pref:．URL:1\r\nitem1.X-ABLabel:_$!<e>!$_\r\n"
            "item2.X-ABRELATEDNAMES:a．X-ABDATE\r\nitem2.X-ABLabel:_$!<．EMAIL>!$_\r\n"},
        Row{"picture", [](C &c) { c.setImage_data(NSImage::withData(NSData::of("\xFF\xD8\xFF" "abcd"))); },
            "PHOTO;ENCODING=b;TYPE=JPEG:/9j/YWJjZA==\r\n"},
        Row{"placeholder",
            [](C &c) {
                auto image = NSImage::withData(NSData::of("\xFF\xD8\xFF" "abcd"));
                image->setName("icon_list_user");
                c.setImage_data(image);
            },
            ""}),
    [](const auto &row) { return std::string(row.param.name); });

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
    EXPECT_EQ(table({contact([](C &c) { c.setFirst_name("Ann"); })}),
              kPlainHeading + std::string("Phone 1 - Type,Phone 1 - Value,End of Row\r\nAnn,,,,,,,,,,,,,,,,\r\n"));
}

TEST(Table, numbersTheGroupsOfTheRichestContact) {
    const auto ann = contact([](C &c) {
        c.mutable_phone_numbers() = {{"home", "1"}, {"home", ""}, {NSString(), "2"}};
        c.mutable_ims() = {{"chat", "AIM", "joe"}};
    });
    const auto bob = contact([](C &c) { c.mutable_addresses() = {{"Home", "S", "T", "R", "P", "C", "de"}}; });
    EXPECT_EQ(table({ann, bob}),
              kPlainHeading + std::string("Phone 1 - Type,Phone 1 - Value,Phone 2 - Type,Phone 2 - Value,Address 1 - Type,"
                                          "Address 1 - Postal Code,Address 1 - Country,Address 1 - Region,Address 1 - City,Address 1 - Street,"
                                          "IM 1 - Type,IM 1 - Service,IM 1 - Value,End of Row\r\n"
                                          ",,,,,,,,,,,,,,home,1,other,2,,,,,,,chat,AIM,joe,\r\n"
                                          ",,,,,,,,,,,,,,,,,,Home,P,C,R,T,S,,,,\r\n"));
}

TEST(Table, givesAnInstantMessageTextWhereAPartIsMissing) {
    const std::string text = table({contact([](C &c) { c.mutable_ims() = {{NSString(), NSString(), "joe"}}; })});
    EXPECT_TRUE(text.ends_with(",,,other,\\n,joe,\r\n")) << text;
}

TEST(Table, quotesAndEscapesWhatTheReaderTakesBack) {
    const std::string text = table({contact([](C &c) {
        c.setFirst_name("a,b");
        c.setMiddle_name("\"");
        c.setLast_name("c\\d");
        c.setNotes("1\n2\r\n3\xE2\x80\xA8" "4\xC3\xA4");
        c.mutable_phone_numbers() = {{"a,\"\\b\n", "1,\n\"2"}};
    })});
    EXPECT_EQ(text.substr(text.find("\r\n") + 2),
              "\"a,b\",,\"\"\"\",,c\\\\d,,,,,,1\\n2\\r\\n3\\n4\xC3\xA4,,,,a，＂＼b ,\"1, \"\"2\",\r\n");
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
    NoTree() : folder_(fs::temp_directory_path() / ("contact-files-" + std::to_string(std::random_device{}()))) {
        fs::create_directories(folder_);
        store_ = AddressBookStore::open(nullptr);
    }
    ~NoTree() override {
        fs::permissions(folder_, fs::perms::owner_all);
        fs::remove_all(folder_);
    }
    [[nodiscard]] NSString path(const char *name) const { return NSString((folder_ / name).string()); }
    [[nodiscard]] std::string bytes(const char *name) const {
        std::ostringstream text;
        text << std::ifstream(folder_ / name, std::ios::binary).rdbuf();
        return text.str();
    }
    fs::path folder_;
    std::shared_ptr<AddressBookStore> store_;
    const ContactList people_{contact([](C &c) { c.setFirst_name("Ann"); }), contact([](C &c) { c.setFirst_name("Bob"); })};
};

TEST_F(NoTree, writesCardsAndTablesOverWhatWasThere) {
    std::ofstream(folder_ / "a.vcf") << "old";
    store_->exportContactsToVCFFile_toPath(people_, path("a.vcf"));
    EXPECT_EQ(bytes("a.vcf"), "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;Ann;;;\r\nFN:\r\nEND:VCARD\r\n"
                              "BEGIN:VCARD\r\nVERSION:3.0\r\nN:;Bob;;;\r\nFN:\r\nEND:VCARD\r\n");
    std::string told;
    store_->exportContactsToCSVFileFromArray_toPath_callBack(people_, path("a.csv"), [&](std::int32_t result, std::int64_t count) {
        told += std::to_string(result) + " " + std::to_string(count);
    });
    EXPECT_EQ(told, "0 2");
    EXPECT_TRUE(bytes("a.csv").ends_with("Ann,,,,,,,,,,,,,,,,\r\nBob,,,,,,,,,,,,,,,,\r\n"));
    EXPECT_FALSE(store_->failures().first());
}

TEST_F(NoTree, aFailureLeavesTheOldFile) {
    std::ofstream(folder_ / "a.vcf") << "old";
    const ContactList broken{people_[0], nullptr};
    store_->exportContactsToVCFFile_toPath(broken, path("a.vcf"));
    EXPECT_TRUE(store_->failures().first());
    EXPECT_EQ(bytes("a.vcf"), "old");
    std::string told;
    store_->exportContactsToCSVFileFromArray_toPath_callBack(people_, path("none/a.csv"), [&](std::int32_t result, std::int64_t count) {
        told += std::to_string(result) + " " + std::to_string(count);
    });
    EXPECT_EQ(told, "-1 0");
    store_->exportContactsToVCFFile_toPath(people_, path("none/a.vcf"));
    EXPECT_TRUE(store_->failures().first());
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()), 1);
}

// Writers that cannot finish, over an old file and under a new name; the disk's limit and the person's rights are a child's.
class Hindered : public NoTree {
protected:
    // Of the export in a child after `hinder`: 0 where it failed and the folder holds the old file alone.
    int left(const std::function<void()> &hinder) {
        std::ofstream(folder_ / "old") << "old";
        fs::permissions(folder_ / "old", fs::perms(0744));
        return testdevice::inChild([&] {
            hinder();
            for (const Writer write : kWriters)
                for (const char *name : {"old", "new"}) {
                    write(*store_, people_, path(name));
                    const auto failure = store_->failures().first();
                    if (!failure || bytes("old") != "old")
                        return 1;
                    if (!failure->text.starts_with(path(name).str() + ": "))
                        return 3;
                    if (std::distance(fs::directory_iterator(folder_), fs::directory_iterator()) != 1)
                        return 2;
                }
            return 0;
        });
    }
};

TEST_F(Hindered, byAFullDisk) {
    EXPECT_EQ(left([] {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{40, 40};   // the second write call meets it, too
                  setrlimit(RLIMIT_FSIZE, &limit);
              }), 0);
}

TEST_F(Hindered, byAFolderWithoutWritePermission) {
    EXPECT_EQ(left([this] {
                  fs::permissions(folder_, fs::perms(0555));
                  if (getuid() == 0 && setuid(65534) != 0)
                      _exit(9);
              }), 0);
}

}  // namespace

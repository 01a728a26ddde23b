// Contacts written to a file and read back by the program: what each format carries, field by field.
#include <gtest/gtest.h>

#include <random>

#include "device/ImageFolder.h"
#include "device/contacts/AddressBookStore.h"
#include "tests/host/Program.h"
#include "tests/support/ContactText.h"

using nlohmann::ordered_json;
using testhost::Program;

namespace {

using C = ZpContactDataInfo;

std::string imageWith(const Program &program, const ContactList &contacts) {
    const std::string image = program.emptyImage("image");
    const auto store = device::contacts::AddressBookStore::open(std::make_shared<device::ImageFolder>(image));
    std::size_t added = 0;
    store->addNewContacts_toGroups_progress(contacts, {}, [&](std::int64_t, std::int64_t, std::int32_t result) {
        added += result == 0;
        return 0;
    });
    EXPECT_EQ(added, contacts.size());
    return image;
}

ordered_json writtenAndRead(const Program &program, const std::string &image, const std::string &file) {
    EXPECT_EQ(program.run({"--device", image, "--replace", "contacts", "export", file, "--all"}).status, 0);
    return program.json({"contacts", "read", file})["contacts"];
}

constexpr const char *kEverything =
    "name_title=Dr.; first_name=Ada; middle_name=K.; last_name=Lovelace, Byron; name_suffix=II; first_name_yomi=aida; middle_name_yomi=kay; "
    "last_name_yomi=lavleis; nickname=Countess; company=Engines: A, B; department=Notes; job=Analyst; birthday=1815-12-10; "
    "notes=one\ntwo \\n, \"three\"; four\r\n; tel(Mobile)=+1; tel(boat, red)=2,3; email(Home)=a@b; email(Work)=c@d; "
    "adr(Home)=Main 1\nRear,London,,1000,UK,gb; date(Anniversary)=1835-07-08; im(Home)=Chat/ada; im(Work)=~/ada2; "
    "url(HomePage)=http://x.org/a; url(Blog)=http://x.org:80/b; related(Spouse)=William; image=\xFF\xD8\xFF" "abc";

TEST(ContactsRoundTrip, aCardCarriesWhatItsReaderTakes) {
    const Program program;
    const std::string image = imageWith(program, {contactOf(kEverything)});
    const ordered_json read = writtenAndRead(program, image, "a.vcf");
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].dump(1) + "\n", readFile(HN_SAMPLES_DIR "/cases/everything.vcf.json"));
    EXPECT_EQ(program.json({"--device", image, "contacts", "import", "--as-is", "a.vcf"})["succeeded"], 1);   // again, beside the first
    ordered_json list = program.json({"--device", image, "contacts", "list"})["contacts"];
    ASSERT_EQ(list.size(), 2u);
    // On the device the reader's leavings are gone; lost are the reading of the middle name, a country code, messengers' labels.
    for (const char *field : {"pKey", "middle_name_yomi", "ims", "addresses"})
        list[0].erase(field), list[1].erase(field);
    EXPECT_EQ(list[0], list[1]);
}

TEST(ContactsRoundTrip, aTableCarriesWhatItsReadersTake) {
    const Program program;
    for (const ContactList &contacts : {ContactList{contactOf(kEverything)}, ContactList{contactOf(kEverything), contactOf("first_name=Zoe")}}) {   // by the first reader, by the second
        const ordered_json read = writtenAndRead(program, imageWith(program, contacts), "a.csv");
        ASSERT_EQ(read.size(), contacts.size());
        EXPECT_EQ(read[0].dump(1) + "\n", readFile(HN_SAMPLES_DIR "/cases/everything.csv.json"));
        std::filesystem::remove_all(program.home() / "image");
    }
}

// ---------------------------------------------------------------- hostile texts

// Made of all that means something to a reader of either kind.
class Hostile {
public:
    explicit Hostile(unsigned seed) : random_(seed) {}

    std::shared_ptr<C> contact() {
        auto made = make<C>();
        C &c = *made;
        c.setFirst_name(text()), c.setLast_name(text()), c.setMiddle_name(text()), c.setName_title(text()), c.setName_suffix(text());
        c.setFirst_name_yomi(text()), c.setLast_name_yomi(text()), c.setNickname(text()), c.setCompany_name(text()), c.setDepartment(text());
        c.setJob_title(text()), c.setNotes(text());
        const auto some = [this](const auto &add) {
            for (int n = below(3); n > 0; --n)
                add();
        };
        some([&] { c.mutable_phone_numbers().push_back({text(), text()}); });
        some([&] { c.mutable_emails().push_back({text(), text()}); });
        some([&] { c.mutable_addresses().push_back({text(), text(), text(), text(), text(), text(), text()}); });
        some([&] { c.mutable_urls().push_back({text(), text()}); });
        some([&] { c.mutable_ims().push_back({text(), text(), text()}); });
        some([&] { c.mutable_relatednames().push_back({text(), text()}); });
        some([&] { c.mutable_dates().push_back({text(), text()}); });
        return made;
    }

private:
    int below(int n) { return std::uniform_int_distribution(0, n - 1)(random_); }
    // With a letter at either end: the device takes control characters off there.
    NSString text() {
        static constexpr const char *kWords[] = {
            ":", ";", "=", ",", ".", "\"", "\"\"", "\\", "\\n", "\n", "\r\n", " ", "END:VCARD", "END", "VCARD", "BEGIN:VCARD", "N:", "NOTE:", "ORG:",
            "TITLE:", "NICKNAME:", "TEL;", "EMAIL;", "TYPE=", "type=", "URL;TYPE=", ";TYPE=pref:", "IMPP", ".TEL", ".EMAIL", ".URL:", ".URL", ".IMPP", ".ADR",
            ".X-ABDATE", ".X-ABRELATEDNAMES", "item1", "_$!<", ">!$_", "INTERNET", "pref", "X-PHONETIC-FIRST-NAME:", "http:", "\xC3\xA4", "\xE2\x80\xA8", "x"};
        std::string text = "a";
        for (int n = below(5); n > 0; --n)
            text += kWords[below(std::size(kWords))];
        return text + "z";
    }
    std::mt19937 random_;
};

// Letters alone: what a format must write otherwise (marks and a V in full width, line breaks as blanks) is no part of this.
std::string letters(const ordered_json &value) {
    std::string all = value.is_null() ? std::string() : value.get<std::string>(), text;
    for (std::size_t at; (at = all.find("\uFF36")) != std::string::npos;)
        all.replace(at, 3, "V");
    for (const char c : all)
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'))
            text += c;
    return text;
}

// Both sides as one text each: the fields of a list that `keys` name.
std::string fieldsOf(const ordered_json &contact, bool hasLabelsOfMessengers) {
    std::string text;
    for (const auto &[name, value] : contact.items()) {
        if (value.is_string() && value != "" && name != "pKey" && name != "completeName")
            text += name + "=" + letters(value) + "\n";
        else if (value.is_array())
            for (const auto &item : value) {
                text += name;
                for (const auto &[key, part] : item.items())
                    if (key != "country_code" && (key != "type" || name != "ims" || hasLabelsOfMessengers))
                        text += " " + letters(part);
                text += "\n";
            }
    }
    return text;
}

class HostileContacts : public testing::TestWithParam<const char *> {};

TEST_P(HostileContacts, comeBackInTheirPlaces) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Program program;
    Hostile hostile(seed);
    ContactList contacts;
    for (int i = 0; i < 150; ++i)
        contacts.push_back(hostile.contact());
    const std::string image = imageWith(program, contacts), format = GetParam();
    const ordered_json read = writtenAndRead(program, image, "a." + format);
    const ordered_json stored = program.json({"--device", image, "contacts", "list"})["contacts"];
    ASSERT_EQ(read.size(), contacts.size());
    for (std::size_t i = 0; i < read.size(); ++i) {
        ASSERT_EQ(fieldsOf(read[i], format == "csv"), fieldsOf(stored[i], format == "csv")) << stored[i].dump();
    }
}

INSTANTIATE_TEST_SUITE_P(Format, HostileContacts, testing::Values("vcf", "csv"), [](const auto &row) { return std::string(row.param); });

}  // namespace

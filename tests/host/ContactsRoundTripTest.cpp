// Contacts written to a file and read back by the program: what each format carries, field by field.
#include <gtest/gtest.h>

#include <random>

#include "device/ImageFolder.h"
#include "device/contacts/AddressBookStore.h"
#include "tests/host/Program.h"

using nlohmann::ordered_json;
using testhost::Program;

namespace {

using C = ZpContactDataInfo;

std::string imageWith(const Program &program, const ContactList &contacts) {
    EXPECT_EQ(program.run({"device", "create", "image", "--name", "Phone"}).status, 0);
    const auto store = device::contacts::AddressBookStore::open(std::make_shared<device::ImageFolder>(program.home() / "image"));
    std::size_t added = 0;
    store->addNewContacts_toGroups_progress(contacts, {}, [&](std::int64_t, std::int64_t, std::int32_t result) {
        added += result == 0;
        return 0;
    });
    EXPECT_EQ(added, contacts.size());
    return "image";
}

ordered_json writtenAndRead(const Program &program, const std::string &image, const std::string &file) {
    EXPECT_EQ(program.run({"--device", image, "--replace", "contacts", "export", file, "--all"}).status, 0);
    return program.json({"contacts", "read", file})["contacts"];
}

std::shared_ptr<C> everything() {
    auto made = make<C>();
    C &c = *made;
    c.setName_title("Dr."), c.setFirst_name("Ada"), c.setMiddle_name("K."), c.setLast_name("Lovelace, Byron"), c.setName_suffix("II");
    c.setFirst_name_yomi("aida"), c.setMiddle_name_yomi("kay"), c.setLast_name_yomi("lavleis"), c.setNickname("Countess");
    c.setCompany_name("Engines: A, B"), c.setDepartment("Notes"), c.setJob_title("Analyst"), c.setBirthday("1815-12-10");
    c.setNotes("one\ntwo \\n, \"three\"; four\r\n");
    c.mutable_phone_numbers() = {{"Mobile", "+1"}, {"boat, red", "2,3"}};
    c.mutable_emails() = {{"Home", "a@b"}, {"Work", "c@d"}};
    c.mutable_addresses() = {{"Home", "Main 1\nRear", "London", "", "1000", "UK", "gb"}};
    c.mutable_dates() = {{"Anniversary", "1835-07-08"}};
    c.mutable_ims() = {{"Home", "Chat", "ada"}, {"Work", NSString(), "ada2"}};
    c.mutable_urls() = {{"HomePage", "http://x.org/a"}, {"Blog", "http://x.org:80/b"}};
    c.mutable_relatednames() = {{"Spouse", "William"}};
    c.setImageCharData(NSData::of("\xFF\xD8\xFF" "abc"));
    return made;
}

TEST(ContactsRoundTrip, aCardCarriesWhatItsReaderTakes) {
    const Program program;
    const std::string image = imageWith(program, {everything()});
    const ordered_json read = writtenAndRead(program, image, "a.vcf");
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].dump(),
              R"({"pKey":null,"completeName":null,"first_name":"Ada","last_name":"Lovelace, Byron","middle_name":"K.",)"
              R"("name_title":"Dr.","name_suffix":"II","first_name_yomi":"aida","last_name_yomi":"lavleis","middle_name_yomi":null,)"
              R"("nickname":"Countess","company_name":"Engines: A, B","department":"Notes","job_title":"Analyst","birthday":"1815-12-10",)"
              R"("notes":"one\ntwo \\n, \"three\"; four","imagePath":null,"imageCharData":"/9j/YWJj","image_length":6,)"
              R"("phone_numbers":[{"type":"Mobile","phone_number":"+1\r"},{"type":"boat, red","phone_number":"2,3\r"}],)"
              R"("emails":[{"type":"Home","email":"a@b"},{"type":"Work","email":"c@d"}],)"
              R"("addresses":[{"type":"=Home","street":"Main 1 Rear","city":"London","state":"","postal_code":"1000","country":"UK","country_code":null}],)"
              R"("urls":[{"type":"HomePage","url":"http://x.org/a"},{"type":"Blog","url":"http://x.org:80/b"}],)"
              R"("dates":[{"type":"Anniversary","date":"1835-07-08"}],"relatednames":[{"type":"Spouse","relatename":"William\r"}],)"
              R"("ims":[{"type":null,"service":"Chat","user":"ada"},{"type":null,"service":"","user":"ada2"}]})");
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
    const auto plain = make<C>();
    plain->setFirst_name("Zoe");
    for (const ContactList &contacts : {ContactList{everything()}, ContactList{everything(), plain}}) {   // by the first reader, by the second
        const ordered_json read = writtenAndRead(program, imageWith(program, contacts), "a.csv");
        ASSERT_EQ(read.size(), contacts.size());
        EXPECT_EQ(read[0].dump(),
                  R"({"pKey":null,"completeName":null,"first_name":"Ada","last_name":"Lovelace, Byron","middle_name":"K.",)"
                  R"("name_title":"Dr.","name_suffix":"II","first_name_yomi":"aida","last_name_yomi":"lavleis","middle_name_yomi":"kay",)"
                  R"("nickname":"Countess","company_name":"Engines: A, B","department":"Notes","job_title":"Analyst","birthday":"1815-12-10",)"
                  R"("notes":"one\ntwo \\n, \"three\"; four","imagePath":null,"imageCharData":null,"image_length":0,)"
                  R"("phone_numbers":[{"type":"Mobile","phone_number":"+1"},{"type":"boat， red","phone_number":"2,3"}],)"
                  R"("emails":[{"type":"Home","email":"a@b"},{"type":"Work","email":"c@d"}],)"
                  R"("addresses":[{"type":"Home","street":"Main 1 Rear","city":"London","state":"","postal_code":"1000","country":"UK","country_code":null}],)"
                  R"("urls":[{"type":"HomePage","url":"http://x.org/a"},{"type":"Blog","url":"http://x.org:80/b"}],)"
                  R"("dates":[{"type":"Anniversary","date":"1835-07-08"}],"relatednames":[{"type":"Spouse","relatename":"William"}],)"
                  R"("ims":[{"type":"Home","service":"Chat","user":"ada"},{"type":"Work","service":"","user":"ada2"}]})");
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
        for (int n = below(3); n > 0; --n)
            c.mutable_phone_numbers().push_back({text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_emails().push_back({text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_addresses().push_back({text(), text(), text(), text(), text(), text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_urls().push_back({text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_ims().push_back({text(), text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_relatednames().push_back({text(), text()});
        for (int n = below(3); n > 0; --n)
            c.mutable_dates().push_back({text(), text()});
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

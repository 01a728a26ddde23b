// Real files of other programs, through the program into an empty image and out of it again.
#include <gtest/gtest.h>

#include "tests/host/Program.h"

using nlohmann::ordered_json;
using testhost::Outcome;
using testhost::Program;

namespace {

struct Field {
    const char *pointer;   // below /contacts, in the order of the list
    const char *value;
};
struct Row {
    const char *file;
    std::size_t contacts;
    std::vector<Field> fields;
};

std::string sample(const std::string &file) { return std::string(HN_SAMPLES_DIR "/") + file; }

std::string emptyImage(const Program &program, const std::string &name) {
    EXPECT_EQ(program.run({"device", "create", name, "--name", name}).status, 0);
    return name;
}

class ForeignFile : public testing::TestWithParam<Row> {};

TEST_P(ForeignFile, comesInWithWhatItSays) {
    const Program program;
    const std::string image = emptyImage(program, "image");
    const Outcome outcome = program.run({"--device", image, "contacts", "import", sample(GetParam().file)});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const ordered_json list = program.json({"--device", image, "contacts", "list"});
    ASSERT_EQ(list["contacts"].size(), GetParam().contacts);
    for (const Field &field : GetParam().fields) {
        const ordered_json::json_pointer pointer(std::string("/contacts") + field.pointer);
        ASSERT_TRUE(list.contains(pointer)) << field.pointer << list.dump(1);
        EXPECT_EQ(list.at(pointer).get<std::string>(), field.value) << field.pointer;
    }
}

std::string nameOf(const testing::TestParamInfo<Row> &row) {
    std::string name;
    for (const char c : std::string(row.param.file))
        name += std::isalnum(static_cast<unsigned char>(c)) ? std::string(1, c) : "";
    return name;
}

INSTANTIATE_TEST_SUITE_P(Cards, ForeignFile, testing::Values(
    Row{"vcard/German.vcf", 1, {{"/0/last_name", "Nüßlebaum"}, {"/0/first_name", "Sören"}, {"/0/addresses/0/city", "Mößlitz"}}},
    Row{"vcard/John_Doe_ANDROID.vcf", 6, {{"/1/first_name", "Ñ Ñ Ñ"}, {"/1/emails/1/email", "ÑÑÑÑÑÑÑÑÑÑÑÑÑÑ"}, {"/2/phone_numbers/3/phone_number", "45678901"}, {"/4/emails/0/email", "john.doe@company.com"}}},
    Row{"vcard/John_Doe_GMAIL.vcf", 1,
        {{"/0/middle_name", "Richter, James"}, {"/0/first_name_yomi", "Jon"}, {"/0/company_name", "IBM"}, {"/0/birthday", "1980-03-22"},
         {"/0/phone_numbers/0/type", "Mobile"}, {"/0/phone_numbers/0/phone_number", "905-555-1234"}, {"/0/urls/0/url", "http://www.ibm.com"},
         {"/0/dates/0/type", "Anniversary"}, {"/0/dates/0/date", "1975-03-01"}, {"/0/relatednames/0/relatename", "Jenny"},
         {"/0/addresses/0/street", "Crescent moon drive, 555-asd, Nice Area, Albaney, New York 12345, United States of America"}}},
    Row{"vcard/John_Doe_IPHONE.vcf", 1,
        {{"/0/nickname", "Johny"}, {"/0/department", "Accounting"}, {"/0/birthday", "2012-06-06"}, {"/0/phone_numbers/3/type", "HomeFAX"},
         {"/0/phone_numbers/6/type", "AssistantPhone"}, {"/0/phone_numbers/6/phone_number", "905-222-1234"},
         {"/0/addresses/1/street", "Street4, Building 6, Floor 8"}, {"/0/urls/0/type", "HomePage"}, {"/0/urls/0/url", "http://www.ibm.com"}}},
    Row{"vcard/John_Doe_MS_OUTLOOK.vcf", 1,
        {{"/0/phone_numbers/1/phone_number", "(905) 666-1234"}, {"/0/addresses/1/postal_code", "12345"}, {"/0/birthday", "1980-03-22"},
         {"/0/emails/0/email", "john.doe@ibm.cm"}, {"/0/ims/0/user", "johny5@aol.com"}, {"/0/relatednames/0/type", "Manager"}}},
    Row{"vcard/LabelTest2.vcf", 1,
        {{"/0/addresses/0/type", "Work"}, {"/0/addresses/0/street", "Business-Straße 19, 76543 Schaffhausen"}, {"/0/addresses/1/type", "Home"}}},
    Row{"vcard/outlook-2003.vcf", 1,
        {{"/0/company_name", "Company, The"}, {"/0/notes", "This is the note field!!\nSecond line\n\nThird line is empty"}, {"/0/emails/0/email", "jdoe@hotmail.com"}}},
    Row{"vcard/jds-contacts.vcf", 5, {{"/1/last_name", "Biernoth"}, {"/1/emails/0/type", "Home"}, {"/1/birthday", "1951-11-22"}}},
    Row{"vcard/Simon_Perreault.vcf", 1,
        {{"/0/phone_numbers/0/phone_number", "+1-418-656-9254;ext=102"}, {"/0/phone_numbers/1/type", "Mobile"}, {"/0/emails/0/type", "Work"},
         {"/0/addresses/0/street", "2600 boul. Laurier, suite 625"}, {"/0/company_name", "Viagenie"}}},
    Row{"vcard/v3Utf16Bom.vcf", 2,
        {{"/0/last_name", "Kinzel"}, {"/0/birthday", "1978-03-11"}, {"/0/phone_numbers/0/phone_number", "0123-45678"}, {"/1/company_name", "KMS Außenstelle"},
         {"/1/phone_numbers/1/type", "HomeFAX"}, {"/1/emails/0/email", "blablö@blub.com"}}},
    Row{"vcard/vcard-rfc2426.vcf", 2,
        {{"/0/addresses/0/city", "Raleigh"}, {"/0/phone_numbers/1/type", "WorkFAX"}, {"/0/urls/0/url", "http://home.earthlink.net/~fdawson"},
         {"/1/addresses/0/postal_code", "94043"}, {"/1/company_name", "Netscape Communications Corp."}}},
    Row{"vcard/vcard-vCards-SAP.vcf", 30, {{"/14/first_name", "Günther"}, {"/14/last_name", "Blümchen"}, {"/14/addresses/0/city", "Redwood Shores"}}}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(Tables, ForeignFile, testing::Values(
    Row{"csv/Google10.csv", 1,
        {{"/0/first_name", "Max"}, {"/0/middle_name_yomi", "Zweiter Vorname phonetisch"}, {"/0/birthday", "1972-01-31"}, {"/0/emails/1/email", "ohneLabel2@folker.de"},
         {"/0/phone_numbers/2/phone_number", "Tel9"}, {"/0/phone_numbers/3/type", "WorkFAX"}, {"/0/addresses/0/street", "Eisenbahnstraße, 84, Postfach"},
         {"/0/ims/2/service", "ICQ"}, {"/0/ims/2/user", "Chatadresse3"}, {"/0/dates/0/date", "2001-01-04"}, {"/0/relatednames/0/relatename", "Petra"}}},
    Row{"csv/GoogleCreatedOutlook.csv", 1,
        {{"/0/name_title", "Dr."}, {"/0/birthday", "1972-01-31"}, {"/0/phone_numbers/3/type", "Work"}, {"/0/addresses/1/city", "Leipzig"}, {"/0/emails/2/email", "andere@folker-kinzel.de"},
         {"/0/relatednames/0/type", "Spouse"},
         {"/0/notes", "Kommentar ÄÄÄÄÄÄ ääääää ÖÖÖÖÖÖ öööööö ÜÜÜÜÜÜ üüüüüü ßßßßßß\n\nOther Phone: Fax work\nOther Phone: Fax privat\nIM: googleTalk: Chatadresse"}}},
    Row{"csv/ThunderbirdUtf8.csv", 1,
        {{"/0/nickname", "Maxl"}, {"/0/birthday", "1972-01-31"}, {"/0/phone_numbers/0/phone_number", "Tel geschäftlich"}, {"/0/phone_numbers/4/type", "Mobile"},
         {"/0/addresses/0/street", "Privatstr. 88, 2. Zeile"}, {"/0/addresses/1/type", "Work"}, {"/0/job_title", "Position"}, {"/0/notes", "Kommentar für Maxl"}}},
    Row{"csv/csv_semicolon.csv", 2, {{"/0/first_name", "Jane"}, {"/1/emails/0/email", "john@doe.invalid"}}},
    Row{"csv/quote.csv", 1, {{"/0/company_name", "Acer America"}, {"/0/phone_numbers/0/phone_number", "(800) 000-0000"}}}),
    nameOf);

// ---------------------------------------------------------------- the way round, and what is said

constexpr const char *kForeign = "BEGIN:VCARD\nVERSION:4.0\nFN:Ada Lovelace\nTEL:+44 20 555\nROLE:Mathematician\nTITLE:Countess\nEND:VCARD\n";

TEST(ForeignImport, isRefusedAsItIsAndByRead) {
    const Program program;
    const std::string image = emptyImage(program, "image"), file = program.file("a.vcf", "BEGIN:VCARD\nORG:Acme\nEND:VCARD\n");
    EXPECT_EQ(program.json({"--device", image, "contacts", "import", file, "--as-is"}, 1)["fatal"]["line"], 2);
    EXPECT_EQ(program.json({"contacts", "read", file}, 1)["fatal"]["line"], 2);
    EXPECT_EQ(program.json({"--device", image, "contacts", "import", file})["succeeded"], 1);
}

TEST(ForeignImport, tellsWhatItLeavesBehindAndKeepsTheFilesFolder) {
    const Program program;
    const std::string image = emptyImage(program, "image");
    const Outcome outcome = program.run({"--device", image, "contacts", "import", program.file("in/ada.vcf", kForeign)});
    EXPECT_NE(outcome.err.find("ada.vcf:1: card 1 \"Ada Lovelace\" leaves behind: ROLE \"Mathematician\"\n"), std::string::npos) << outcome.err;
    const auto kept = ordered_json::parse(testhost::readFile(program.home() / ".config/hnmanager/settings.json"));
    EXPECT_EQ(kept["product"]["ContactImportPathKey"], (program.home() / "in").string());
    for (const auto &entry : std::filesystem::recursive_directory_iterator(program.home() / ".cache"))
        EXPECT_NE(entry.path().filename(), "ada.vcf");   // no private copy is left
}

TEST(ForeignImport, tellsHowManyNewContactsRepeatOne) {
    const Program program;
    const std::string image = emptyImage(program, "image"), file = program.file("ada.vcf", kForeign);
    const std::string said = "1 of the 1 new contacts repeats one that was there";
    EXPECT_EQ(program.run({"--device", image, "contacts", "import", file}).err.find(said), std::string::npos);
    const Outcome again = program.run({"--device", image, "contacts", "import", file});
    EXPECT_NE(again.err.find(said), std::string::npos) << again.err;
}

struct Broken {
    const char *name, *file, *bytes, *said;
};
class BrokenFile : public testing::TestWithParam<Broken> {};

TEST_P(BrokenFile, isRefusedWithLineAndReasonAndChangesNothing) {
    const Program program;
    const std::string image = program.smallImage("image"), before = testhost::pictureOf(image + "/HomeDomain");
    const Outcome outcome = program.run({"--device", image, "contacts", "import", program.file(GetParam().file, GetParam().bytes)});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find(GetParam().said), std::string::npos) << outcome.err;
    EXPECT_EQ(testhost::pictureOf(image + "/HomeDomain"), before);
}

INSTANTIATE_TEST_SUITE_P(Row, BrokenFile, testing::Values(
    Broken{"cutShort", "a.vcf", "BEGIN:VCARD\nEND:VCARD\nBEGIN:VCARD\nFN:A", "a.vcf:3: the card that begins here has no END:VCARD"},
    Broken{"noCard", "a.vcf", "\n\xFF\xD8\xFF\xE0 JFIF\n", "a.vcf:2: no card begins anywhere"},
    Broken{"nothingInside", "a.vcf", "BEGIN:VCARD\nGEO:1,2\nEND:VCARD\n", "a.vcf: holds nothing to import"},
    Broken{"noKnownHeading", "a.csv", "Ada,Lovelace,5\nAlan,Turing,6\n", "a.csv:1: no column has a heading that is known"},
    Broken{"openQuote", "a.csv", "First Name,Notes\nAda,x\nAlan,\"y\nEve,z\n", "a.csv:3: a quote that opens a cell here is never closed"}),
    [](const auto &row) { return std::string(row.param.name); });

}  // namespace

#include "HNManagerPlugin/Classes/SubViews/Contacts/ViewModel/VCardFileReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "tests/HNManagerPlugin/Classes/SubViews/Contacts/ContactText.h"

namespace {

using namespace std::string_literals;

// The records one line each, or "fatal at line N".
std::string outcome(std::string_view text) {
    try {
        return described(VCardFileReader::readText(text, "book.vcf"));
    } catch (const FatalParseFailure &failure) {
        return "fatal at line " + std::to_string(failure.line().value_or(-1));
    }
}

std::string card(std::string_view body) { return "BEGIN:VCARD\r\n" + std::string(body) + "\r\nEND:VCARD\r\n"; }

// ---------------------------------------------------------------- what one line gives

struct Line {
    const char *name;
    std::string body;   // between BEGIN and END, CRLF ends
    std::string contact;
};
class CardLine : public testing::TestWithParam<Line> {};

TEST_P(CardLine, givesItsFields) { EXPECT_EQ(outcome(card(GetParam().body)), GetParam().contact + "\n"); }

const auto kName = [](const auto &row) { return std::string(row.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Names, CardLine,
    testing::Values(
        Line{"fiveParts", "N:Doe;John;Q.;Dr.;Jr.",
             "last_name=Doe; first_name=John; middle_name=Q.; name_title=Dr.; name_suffix=Jr."},
        Line{"emptyPartsAreNotAbsent", "N:;;;;", "last_name=; first_name=; middle_name=; name_title=; name_suffix="},
        Line{"fourPartsGiveNone", "N:Doe;John;;", ""}, Line{"sixPartsGiveNone", "N:Doe;John;;;;", ""},
        Line{"aColonCutsThem", "N:a;b;c;d;e:f;g", "last_name=a; first_name=b; middle_name=c; name_title=d; name_suffix=e"},
        Line{"parametersAreUnknown", "N;CHARSET=UTF-8:a;b;c;d;e", ""}, Line{"displayNameIsNotRead", "FN:Someone", ""},
        Line{"lowerCaseIsUnknown", "n:a;b;c;d;e\r\ntel;type=HOME:1", ""},
        Line{"phonetics", "X-PHONETIC-FIRST-NAME:jon\r\nX-PHONETIC-LAST-NAME:do",
             "first_name_yomi=jon; last_name_yomi=do"},
        Line{"phoneticWithParameterKeepsTheLine", "X-PHONETIC-FIRST-NAME;X=1:jon", "first_name_yomi=X-PHONETIC-FIRST-NAME;X=1:jon"},
        Line{"nicknameWithColon", "NICKNAME:a:b", "nickname=a:b"},
        Line{"nicknameWithParameterKeepsTheLine", "NICKNAME;X=1:Bob", "nickname=NICKNAME;X=1:Bob"},
        Line{"nicknameTwiceOnALine", "NICKNAME:a NICKNAME:b", "nickname=b"},
        Line{"laterLineWins", "TITLE:Clerk\r\nTITLE:Chief", "job=Chief"}, Line{"longerWordIsTakenToo", "TITLES:x", "job=TITLES:x"},
        Line{"blanksAroundAreCut", " \t\xC2\xA0TITLE: Clerk\xE3\x80\x80", "job= Clerk\xE3\x80\x80"},
        Line{"carriageReturnsInsideGo", "TITLE:a\rb\r\r", "job=ab"}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Texts, CardLine,
    testing::Values(
        Line{"company", "ORG:Acme;Sales;West", "company=Acme; department=Sales"}, Line{"noDepartment", "ORG:Acme;", "company=Acme; department="},
        Line{"orgWithParameterIsUnknown", "ORG;CHARSET=UTF-8:Acme", ""}, Line{"orgTwiceOnALineIsUnknown", "ORG:a;ORG:b;", ""},
        Line{"phoneticCompanyOverwrites", "ORG:Acme;Sales\r\nX-PHONETIC-ORG:akumi", "company=akumi; department=Sales"},
        Line{"birthday", "BDAY;VALUE=date:1990-01-01", "birthday=1990-01-01"}, Line{"plainBirthdayIsUnknown", "BDAY:1990-01-01", ""},
        Line{"birthdayInUpperCaseKeepsTheLine", "BDAY;VALUE=DATE:1990-01-01", "birthday=BDAY;VALUE=DATE:1990-01-01"},
        Line{"noteLineBreak", R"(NOTE:a\nb\rc)", R"(notes=a\nb\rc)"}, Line{"noteEscapedBackslash", R"(NOTE:a\\nb)", "notes=a\\nb"},
        Line{"noteThreeBackslashes", R"(NOTE:\\\n)", "notes=\\\\n"}, Line{"noteKeepsOtherEscapes", R"(NOTE:a\, b\; c\N)", R"(notes=a\, b\; c\N)"},
        Line{"notePlaceholderBecomesABackslash", "NOTE:x&^HJy &^H", "notes=x\\y &^H"},
        Line{"noteBackslashAtTheEnd", "NOTE:a\\", "notes=a\\"}, Line{"noteWithParameterKeepsTheLine", "NOTE;X=1:a", "notes=NOTE;X=1:a"},
        Line{"noteInsideANote", "NOTE:see NOTE:b", "notes=b"}, Line{"foldedLineIsNotJoined", "NOTE:a\r\n b\r\n TITLE:c", "job=c; notes=a"},
        Line{"photo", "PHOTO;ENCODING=b;TYPE=JPEG:Zm9v\r\n YmFy", "image=foo; image_length=3"},
        Line{"photoBehindAnotherParameter", "PHOTO:PHOTO;ENCODING=b;TYPE=JPEG:Zm9v", "image=foo; image_length=3"},
        Line{"photoThatIsNoBase64", "PHOTO;ENCODING=b;TYPE=JPEG:Zm9v\r\nPHOTO;ENCODING=b;TYPE=JPEG:%%", ""}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Numbers, CardLine,
    testing::Values(
        Line{"telKeepsItsCarriageReturn", "TEL;type=CELL:0171", R"(tel(CELL)=0171\r)"},
        Line{"firstParameterCounts", "TEL;type=HOME;type=FAX;type=pref:1", R"(tel(HOME)=1\r)"},
        Line{"oldTypeWord", "TEL;WORK;VOICE:1", R"(tel(WORK)=1\r)"}, Line{"numberBehindTheLastColon", "TEL;type=HOME:tel:+49:5", R"(tel(HOME)=5\r)"},
        Line{"lastEqualsCounts", "TEL;a=b=c:1", R"(tel(c)=1\r)"}, Line{"noColon", "TEL;HOME", R"(tel(HOME)=HOME\r)"},
        Line{"telInsideTel", "TEL;a:TEL;b:1", "tel(a)="}, Line{"telWithoutParameterIsUnknown", "TEL:123", ""},
        Line{"itemTelLosesItsCarriageReturn", "item1.TEL;type=WORK:+1 2:3\r\nitem1.X-ABLabel:_$!<Mobile>!$_", "tel(other)=3"},
        Line{"email", "EMAIL;type=INTERNET;type=WORK;type=pref:a@b", "email(WORK)=a@b"},
        Line{"prefBecomesHome", "EMAIL;type=INTERNET;type=pref:a@b", "email(home)=a@b"}, Line{"prefFirst", "EMAIL;pref:a@b", "email(home)=a@b"},
        Line{"prefInUpperCaseStays", "EMAIL;PREF;INTERNET:a@b", "email(PREF)=a@b"},
        Line{"internetInAnyCase", "EMAIL;TYPE=iNternet;TYPE=HOME:a@b", "email(HOME)=a@b"}, Line{"otherFirst", "EMAIL;TYPE=WORK:x:a@b", "email(WORK)=a@b"},
        Line{"emailWithoutParameterIsUnknown", "EMAIL:a@b", ""}, Line{"itemEmail", "item1.EMAIL;type=INTERNET:a@b", "email(other)=a@b"}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Addresses, CardLine,
    testing::Values(
        Line{"url", "URL;TYPE=HOME:http://host/a", "url(HOME)=http://host/a"}, Line{"urlPortIsCut", "URL;TYPE=HOME:http://host:8080/a", "url(HOME)=http://host"},
        Line{"urlWithoutScheme", "URL;TYPE=HOME:host", "url(~)=~"}, Line{"urlOtherParameterIsUnknown", "URL;WORK:http://h", ""},
        Line{"urlLowerCaseWithUpperCaseBehind", "URL;type=a:URL;TYPE=b:http://h", "url(b)=http://h"},
        Line{"im", "IMPP;X-SERVICE-TYPE=AIM;TYPE=HOME:aim:foo", "im(~)=AIM/foo"},
        Line{"imThreeTypes", "IMPP;X-SERVICE-TYPE=AIM;TYPE=HOME;TYPE=pref:aim:foo", "im(~)=AIM/foo"},
        Line{"imWithOneTypeHasNoUser", "IMPP;X-SERVICE-TYPE=AIM:aim:foo", "im(~)=AIM:aim:fo/~"},
        Line{"imLosesAWholeCharacter", "IMPP;TYPE=\xC3\xA9", "im(~)=/~"}, Line{"imWithEmptyService", "IMPP;TYPE=TYPE=x:y", "im(~)=/y"},
        Line{"related", "X-ABRELATEDNAMES;TYPE=Spouse:Ann:x", "related(other)=Ann"}, Line{"relatedLowerCase", "X-ABRELATEDNAMES;type=a:Ann", "related(other)=Ann"},
        Line{"date", "X-ABDATE;type=Anniversary:2001-02-03", "date(other)=2001-02-03"}, Line{"dateWithoutTypeIsUnknown", "X-ABDATE:2001-02-03", ""},
        Line{"addressOutsideAnItemIsUnknown", "ADR;TYPE=HOME:;;1 Main St;City;ST;123;US", ""},
        Line{"itemAddress", "item1.ADR:pob;ext;1 Main St;City;ST;123;US", "adr(other)=1 Main St,City,ST,123,US"},
        Line{"itemAddressKeepsItsEqualsSign", "item1.ADR;TYPE=HOME;TYPE=pref:;;s;c;st;p;co;more", "adr(=HOME)=s,c,st,p,co"},
        Line{"itemAddressOfSixPartsIsDropped", "item1.ADR:;;s;c;st;p", ""}, Line{"colonCutsTheAddress", "item1.ADR:;;s: x;;a;b;c;d;e", "adr(other)=a,b,c,d,e"},
        Line{"itemIm", "item1.IMPP;X-SERVICE-TYPE=Skype:skype:joe", "im(~)=Skype/joe"}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Labels, CardLine,
    testing::Values(
        Line{"urlLabel", "item1.URL:http://host\r\nitem1.X-ABLabel:_$!<HomePage>!$_", "url(HomePage)=http://host"},
        Line{"urlOwnLabelIsOther", "item1.URL:http://host\r\nitem1.X-ABLabel:Blog", "url(other)=http://host"},
        Line{"urlWithoutLabelLine", "item1.URL:http://host", "url(other)=http://host"},
        Line{"preferredUrl", "item1.URL;TYPE=pref:http://h:80\r\nx", "url(other)=http://h:80"},
        Line{"preferredUrlLowerCaseKeepsTheLine", "item1.URL;type=pref:http://h", "url(other)=item1.URL;type=pref:http://h"},
        Line{"urlLabelWithoutName", "item1.URL:u\r\nitem1.X-ABLabel:_$!<>!$_", "url()=u"},
        Line{"labelOfManyBytes", "item1.URL:u\r\nitem1.X-ABLabel:_$!<\xE7\xAB\xA0\xE5\xAD\x90>!$_", "url(\xE7\xAB\xA0\xE5\xAD\x90)=u"},
        Line{"markBehindOtherText", "item1.URL:u\r\nitem1.X-ABLabel:abcd_$!<x>!$_", "url(_$!<x)=u"},
        Line{"labelBehindTheLastColon", "item1.URL:u\r\nitem1.X-ABLabel:_$!<a:b>!$_", "url(other)=u"},
        Line{"relatedKeepsItsCarriageReturn", "item1.X-ABRELATEDNAMES:Ann\r\nitem1.X-ABLabel:_$!<Spouse>!$_", R"(related(Spouse)=Ann\r)"},
        Line{"dateLosesIt", "item1.X-ABDATE;type=pref:2001-02-03\r\nitem1.X-ABLabel:_$!<Anniversary>!$_", "date(Anniversary)=2001-02-03"},
        Line{"dateOwnLabelIsOther", "item1.X-ABDATE:d\r\nitem1.X-ABLabel:Day", "date(other)=d"},
        Line{"plainLabelOfNineIsAbsent", "item1.X-ABDATE:d\r\nitem1.X-ABLabel:_$!<>!$_", "date(~)=d"},
        Line{"plainLabelOfTenIsTaken", "item1.X-ABDATE:d\r\nitem1.X-ABLabel:_$!<x>!$_", "date(x)=d"},
        Line{"shortPlainLabelIsAbsent", "item1.X-ABRELATEDNAMES:a\r\nitem1.X-ABLabel:_$!<", R"(related(~)=a\r)"},
        Line{"itemTestsContainNotBegin", "item1.X-ABLabel:x.TEL:5", "tel(other)=5"}, Line{"telBeforeUrl", "item1.URL:x.TEL:5", "tel(other)=5"},
        Line{"otherItemsGiveNothing", "item1.X-ABADR:de\r\nitem1.NOTE:x\r\nitems", ""},
        Line{"theLineBelowIsReadAgain", "item1.URL:u\r\nTITLE:Clerk", "job=Clerk; url(other)=u"}),
    kName);

// ---------------------------------------------------------------- whole files

struct File {
    const char *name;
    std::string text;
    std::string outcome;
};
class CardFile : public testing::TestWithParam<File> {};

TEST_P(CardFile, hasItsOutcome) { EXPECT_EQ(outcome(GetParam().text), GetParam().outcome); }

const std::string kOpen = "BEGIN:VCARD\n", kClose = "END:VCARD\n";

INSTANTIATE_TEST_SUITE_P(
    Taken, CardFile,
    testing::Values(
        File{"emptyCard", kOpen + kClose, "\n"}, File{"twoCards", kOpen + "TITLE:a\n" + kClose + kOpen + "TITLE:b\n" + kClose, "job=a\njob=b\n"},
        File{"endInsideANoteAddsABlankRecord", kOpen + "NOTE:END:VCARD\n" + kClose, "notes=END:VCARD\n\n"},
        File{"cardsWithoutBeginAreBlank", "END:VCARD END:VCARDEND:VCARD", "\n\n\n"},
        File{"endsBeforeTheFirstCardMakeRoom", kClose + kOpen + "TITLE:a\n" + kOpen + "TITLE:b\n" + kClose, "job=a\njob=b\n"},
        File{"nameVersionEndAndItemMayComeFirst", "FN:x\nVERSION:3.0\nENDING\nitem1.X-ABLabel:x\nwhatever\n" + kOpen + kClose, "\n"},
        File{"wrongNameInACardWithoutRecord", kOpen + "N:a;b\nORG:c\n", "fatal at line 3"},
        File{"unknownLinesInACardWithoutRecord", kOpen + "N:a;b\nORG;x:c\nFN:d\nitem1.NOTE:e\nTEL:1", ""},
        File{"lastLineWithoutLineEnd", kOpen + "TITLE:a\nEND:VCARD", "job=a\n"},
        File{"urlAsTheLastLineIsDropped", kOpen + "END:VCARD\nitem1.URL:x", "\n"}, File{"urlWithAnEmptyLineBelow", kOpen + "END:VCARD\nitem1.URL:x\n", "url(other)=x\n"},
        File{"dateAsTheLastLineIsDropped", kOpen + "END:VCARD\nitem1.X-ABDATE:x", "\n"},
        File{"relatedAsTheLastLineIsDropped", kOpen + "END:VCARD\nitem1.X-ABRELATEDNAMES:x", "\n"},
        File{"withoutCarriageReturnALabelLosesALetter", kOpen + "item1.URL:u\nitem1.X-ABLabel:_$!<HomePage>!$_\n" + kClose, "url(HomePag)=u\n"},
        File{"withoutCarriageReturnANumberIsWhole", kOpen + "TEL;type=CELL:1\n" + kClose, "tel(CELL)=1\n"},
        File{"aNulIsACharacter", kOpen + "TITLE:a\0b\n"s + kClose, "job=a\\0b\n"}, File{"loneCarriageReturnsAreNoLineEnds", "BEGIN:VCARD\rTITLE:a\rEND:VCARD\r", "\n"}),
    kName);

INSTANTIATE_TEST_SUITE_P(
    Refused, CardFile,
    testing::Values(
        File{"empty", "", "fatal at line 1"}, File{"blankFirstLine", "\n" + kOpen + kClose, "fatal at line 1"}, File{"byteOrderMark", "\xEF\xBB\xBF" + kOpen + kClose, "fatal at line 1"},
        File{"unknownLineFirst", "FN:x\nhello\n" + kOpen + kClose, "fatal at line 2"}, File{"lowerCaseBegin", "begin:vcard\n" + kClose, "fatal at line 1"},
        File{"wrongNameFirst", "N:a;b\n" + kOpen + kClose, "fatal at line 1"}, File{"propertyBehindAnItemButBeforeACard", "item1.X:y\nTITLE:a\n" + kClose, "fatal at line 2"},
        File{"itemTelFirst", "item1.TEL:1\n" + kOpen + kClose, "fatal at line 1"}, File{"droppedItemUrlFirst", "item1.URL:x", "fatal at line 1"},
        File{"droppedItemAddressFirst", "item1.ADR:x\n" + kOpen + kClose, "fatal at line 1"},
        File{"lastCardWithoutEnd", kOpen + kClose + kOpen + "VERSION:3.0\nTITLE:b\n", "fatal at line 5"},
        File{"orgWithoutSemicolon", kOpen + "ORG:Acme\n" + kClose, "fatal at line 2"}, File{"photoInAnotherForm", kOpen + "PHOTO;ENCODING=BASE64;JPEG:Zm9v\n" + kClose, "fatal at line 2"},
        File{"photoAddress", kOpen + "PHOTO;VALUE=uri:http://x\n" + kClose, "fatal at line 2"},
        File{"emailInternetAlone", kOpen + "EMAIL;TYPE=INTERNET:a@b\n" + kClose, "fatal at line 2"}, File{"urlTypeInLowerCase", kOpen + "URL;type=HOME:http://a\n" + kClose, "fatal at line 2"},
        File{"imWithoutType", kOpen + "IMPP:aim:foo\n" + kClose, "fatal at line 2"}, File{"imTypeInLowerCase", kOpen + "IMPP;type=HOME:aim:foo\n" + kClose, "fatal at line 2"},
        File{"itemImWithoutType", kOpen + "\nitem1.IMPP:aim:foo\n" + kClose, "fatal at line 3"}, File{"itemAddressTypeInLowerCase", kOpen + "item1.ADR;type=HOME:;;a;b;c;d;e\n" + kClose, "fatal at line 2"},
        File{"relatedWithoutColon", kOpen + "X-ABRELATEDNAMES;TYPE=x\n" + kClose, "fatal at line 2"}, File{"dateWithoutColon", kOpen + "X-ABDATE;type=x\n" + kClose, "fatal at line 2"},
        File{"shortUrlLabel", kOpen + "item1.URL:u\nitem1.X-ABLabel:_$!<abcd\n" + kClose, "fatal at line 2"}),
    kName);

TEST(VCardFileReader, namesFileLineAndReasonOfAFailure) {
    try {
        (void)VCardFileReader::readText(kOpen + "TITLE:a\nORG:Acme\n" + kClose, "/tmp/book.vcf");
        FAIL() << "taken";
    } catch (const FatalParseFailure &failure) {
        EXPECT_STREQ(failure.what(), "/tmp/book.vcf:3: ORG: without a \";\" behind the company");
    }
}

TEST(VCardFileReader, logsStartAndEndOfEachCard) {
    std::string log;
    (void)VCardFileReader::readText(kOpen + kClose + "END\n", "book.vcf", [&](std::string_view text) { log += std::string(text) + "|"; });
    EXPECT_EQ(log, "parse vcare contat start|parse vcard contact end|parse vcard contact end|");
}

TEST(VCardFileReader, deleteEnterCharTakesOutBothLineEnds) {
    EXPECT_EQ(VCardFileReader::deleteEnterChar("\r\na\nb\rc\r\n"), NSString("abc"));
    EXPECT_EQ(VCardFileReader::deleteEnterChar(""), NSString(""));
    EXPECT_EQ(VCardFileReader::deleteEnterChar(NSString()), NSString());
}

// ---------------------------------------------------------------- files on disk

class OnDisk : public testing::Test {
protected:
    OnDisk() : folder_(std::filesystem::path(HN_BINARY_DIR) / ("vcard-" + std::to_string(std::random_device{}()))) { std::filesystem::create_directories(folder_); }
    ~OnDisk() override { std::filesystem::remove_all(folder_); }
    NSString write(const std::string &bytes) {
        const auto path = folder_ / "book.vcf";
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }
    std::filesystem::path folder_;
};

TEST_F(OnDisk, unreadableFilesGiveNothing) {
    for (const std::string &path : {(folder_ / "missing.vcf").string(), folder_.string(), ""s, "/dev/zero"s}) {
        EXPECT_TRUE(VCardFileReader::read(path).empty()) << path;
        ASSERT_TRUE(VCardFileReader::whyNothing(path)) << path;
        EXPECT_EQ(VCardFileReader::whyNothing(path)->line, std::nullopt);
    }
}

TEST_F(OnDisk, otherEncodingsGiveNothingAndTheLineOfTheFirstBadByte) {
    const std::pair<std::string, int> kFiles[] = {
        {kOpen + "TITLE:\xC3\xA9\nTITLE:\xE9t\xE9\n" + kClose, 3}, {"\xFF\xFE" + kOpen, 1},   {kOpen + "TITLE:\xED\xA0\x80\n", 2},
        {kOpen + "\xC0\xAF", 2},                                    {kOpen + "a\n\n\xE2\x82", 4},
    };
    for (const auto &[bytes, line] : kFiles) {
        const NSString path = write(bytes);
        EXPECT_TRUE(VCardFileReader::read(path).empty());
        ASSERT_TRUE(VCardFileReader::whyNothing(path));
        EXPECT_EQ(VCardFileReader::whyNothing(path)->line, line);
    }
}

TEST_F(OnDisk, aGoodFileIsReadAndHasNoReason) {
    const NSString path = write(kOpen + "TITLE:\xEF\xBF\xBD\n" + kClose);   // a real U+FFFD is no bad byte
    EXPECT_EQ(described(VCardFileReader::read(path)), "job=\xEF\xBF\xBD\n");
    EXPECT_FALSE(VCardFileReader::whyNothing(path));
}

TEST_F(OnDisk, aFailureInAFileNamesIt) {
    const NSString path = write("");
    try {
        (void)VCardFileReader::read(path);
        FAIL() << "taken";
    } catch (const FatalParseFailure &failure) {
        EXPECT_EQ(failure.file(), path);
        EXPECT_EQ(failure.line(), 1);
    }
}

// ---------------------------------------------------------------- real files

std::string sample(const std::string &name) {
    std::ifstream file(std::string(HN_SAMPLES_DIR) + "/vcard/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(RealCards, fiveCardsOfAnotherProgram) {
    EXPECT_EQ(outcome(sample("jds-contacts.vcf")),
              "last_name=Jacobsen; first_name=Thies-Tillman; middle_name=; name_title=; name_suffix=; notes=Lieblingsfarbe: Violett\n"
              "last_name=Biernoth; first_name=Lenn; middle_name=; name_title=; name_suffix=; job=Strassenreiniger; notes=Interessen: Internet trollen, "
              "Kekse backen, Videos schneiden\\nLieblingsessen: Chillibrot mit Kartoffelpuffer; email(HOME)=lenn@lbi.net\n"
              "last_name=Gra\xC3\x9Fl; first_name=Ludwig-G\xC3\xB6tz; middle_name=; name_title=; name_suffix=; job=Rentner; notes=Interessen: Stofftiere, "
              "Basketball\\nLieblingsessen: Reiberouladen; email(HOME)=ludwig-goetz@ludwig-goetz-grassl.org\n"
              "last_name=Kreutzer; first_name=Marita; middle_name=; name_title=; name_suffix=; nickname=mkr; job=Rentnerin; notes=Interessen: "
              "Handarbeiten\\nLieblingsfarbe: Wei\xC3\x9F\\nLieblingsessen: Orangen\n"
              "last_name=Hoelzl; first_name=Kathi; middle_name=; name_title=; name_suffix=; email(HOME)=kathi.hoelzl@alhilal.net; url(HOME)=http://kho.me/\n");
}

TEST(RealCards, aMailProgramsCardOfTheOldVersion) {
    EXPECT_EQ(outcome(sample("outlook-2003.vcf")),
              "last_name=Doe; first_name=John; middle_name=; name_title=Mr.; name_suffix=III; nickname=Joey; company=Company, The; "
              "department=TheDepartment; job=The Job Title; notes=NOTE;ENCODING=QUOTED-PRINTABLE:This is the note field!!=0D=0ASecond "
              "line=0D=0A=0D=0AThird line is empty=0D=; tel(WORK)=BusinessPhone\\r; tel(HOME)=HomePhone\\r; tel(CELL)=MobilePhone\\r; "
              "tel(WORK)=BusinessFaxPhone\\r; email(PREF)=jdoe@hotmail.com\n");
}

TEST(RealCards, aPhonesCardWithLowerCaseAddressTypeIsFatal) { EXPECT_EQ(outcome(sample("John_Doe_IPHONE.vcf")), "fatal at line 18"); }

TEST(RealCards, aPhonesCardWithoutItsAddressesIsTaken) {
    std::string text;
    std::istringstream lines(sample("John_Doe_IPHONE.vcf"));
    for (std::string line; std::getline(lines, line);)
        if (line.find("ADR") == std::string::npos)
            text += line + "\n";
    const ContactList contacts = VCardFileReader::readText(text, "phone.vcf");
    ASSERT_EQ(contacts.size(), 1U);
    EXPECT_EQ(contacts[0]->image_length(), 36);   // the first line of the folded picture
    contacts[0]->setImageCharData(nullptr);
    EXPECT_EQ(described(*contacts[0]),
              "last_name=Doe; first_name=John; middle_name=Richter,James; name_title=Mr.; name_suffix=Sr.; nickname=Johny; company=IBM; "
              "department=Accounting; job=Money Counter; birthday=BDAY;value=date:2012-06-06; tel(CELL)=905-555-1234\\r\\r; tel(HOME)=905-666-1234\\r\\r; "
              "tel(WORK)=905-777-1234\\r\\r; tel(HOME)=905-888-1234\\r\\r; tel(WORK)=905-999-1234\\r\\r; tel(PAGER)=905-111-1234\\r\\r; "
              "tel(other)=905-222-1234; email(other)=john.doe@ibm.com; url(HomePage>)=item5.URL;type=pref:http\\://www.ibm.com; image_length=36");
}

// ---------------------------------------------------------------- damage

std::string everyKindOfLine(std::string_view lineEnd) {
    const char *lines[] = {"BEGIN:VCARD", "VERSION:3.0", "N:D\xC3\xB6" "e;J;;Dr.;", "FN:x", "ORG:Acme;West", "NOTE:a\\nb\\\\c", "EMAIL;type=INTERNET;type=pref:a@b",
                           "TEL;type=CELL;type=pref:+49 1", "URL;TYPE=HOME:http://h:8", "IMPP;X-SERVICE-TYPE=AIM;TYPE=HOME:aim:f", "X-ABDATE;TYPE=a:2001",
                           "item1.URL:u", "item1.X-ABLabel:_$!<Home>!$_", "item2.ADR;TYPE=HOME:;;s;c;st;p;co", "item3.X-ABRELATEDNAMES:Ann",
                           "item3.X-ABLabel:_$!<Spouse>!$_", "item4.IMPP;TYPE=x:y", "PHOTO;ENCODING=b;TYPE=JPEG:Zm9v", "END:VCARD"};
    std::string text;
    for (int card = 0; card < 2; ++card)
        for (const char *line : lines)
            text.append(line).append(lineEnd);
    return text;
}

// One record per end of a card, or a refusal that names a line of the text; nothing else.
void expectTakenOrRefused(const std::string &text) {
    if (!unicode::isValid(text))
        return;
    std::size_t ends = 0;
    for (std::size_t at = 0; (at = text.find("END:VCARD", at)) != std::string::npos; at += 9)
        ++ends;
    try {
        ASSERT_EQ(VCardFileReader::readText(text, "book.vcf").size(), ends) << testing::PrintToString(text);
    } catch (const FatalParseFailure &failure) {
        ASSERT_GE(failure.line().value_or(0), 1) << testing::PrintToString(text);
        ASSERT_LE(failure.line().value_or(0), std::ranges::count(text, '\n') + 1) << testing::PrintToString(text);
        ASSERT_FALSE(failure.reason().isEmpty());
    }
}

TEST(DamagedCards, cutAtEveryByte) {
    for (const char *end : {"\n", "\r\n"})
        for (std::string text = everyKindOfLine(end); !text.empty(); text.pop_back())
            expectTakenOrRefused(text);
}

TEST(DamagedCards, eachByteOnceReplaced) {
    for (const char *end : {"\n", "\r\n"}) {
        const std::string whole = everyKindOfLine(end);
        for (std::size_t at = 0; at < whole.size(); ++at)
            for (const char with : {'\n', ':', ';', '=', ' ', '\0', static_cast<char>(whole[at] ^ 0x20)}) {
                std::string text = whole;
                text[at] = with;
                expectTakenOrRefused(text);
            }
    }
}

TEST(DamagedCards, randomTexts) {
    static const char *const kWords[] = {
        "BEGIN:VCARD\n", "END:VCARD", "END:VCARD\r\n", "\n", "\r\n", "\r", ":", ";", "=", " ", "\t", "\xC2\xA0", "\xC3\xA9", "\\", "n", "\\\\", "&^HJ", "_$!<", ">!$_", "N:", "a;b;c;d;e",
        "X-PHONETIC-FIRST-NAME:", "X-PHONETIC-LAST-NAME", "X-PHONETIC-ORG:", "ORG:", "ORG", "NICKNAME:", "BDAY;", "VALUE=date:", "TITLE:", "NOTE:", "PHOTO;ENCODING=b;TYPE=JPEG:", "Zm9v", "Yg==",
        "EMAIL;", "type=INTERNET;", "internet", "TYPE=", "type=", "TEL;", "pref", "URL;TYPE=", "URL;type=", "http://h", "IMPP", "X-ABRELATEDNAMES;TYPE=", "X-ABDATE;type=", "item", ".TEL", ".EMAIL",
        ".URL", ".URL:", ";TYPE=pref:", ";type=pref:", ".IMPP", ".ADR", ";TYPE", ";;;;;;", ".X-ABRELATEDNAMES", ".X-ABDATE", "item1.X-ABLabel:", "VERSION:", "FN:", "text", "12345678"};
    const auto seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        std::string text = random() % 8 ? "BEGIN:VCARD\n" : "";
        for (std::size_t words = random() % 24; words > 0; --words)
            text += kWords[random() % std::size(kWords)];
        text += random() % 4 ? "\nEND:VCARD\n" : "";
        expectTakenOrRefused(text);
        if (HasFatalFailure())
            return;
    }
}

}  // namespace

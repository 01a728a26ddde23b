#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"
#include "host/import/CardDialect.h"
#include "host/import/Rewriting.h"

using namespace host::foreign;

namespace {

struct Outcome {
    std::string cards, told;
};
Outcome rewritten(std::string_view bytes) {
    Outcome outcome;
    (void)rewriteCards(bytes, "a.vcf", [&](std::string_view piece) { outcome.cards.append(piece); },
                       [&](std::int64_t line, const std::string &text) { outcome.told += std::to_string(line) + ": " + text + "\n"; });
    return outcome;
}

// What stands in the one card behind its VERSION; `N:;;;;` is left out where it says nothing.
std::string body(const std::string &cards) {
    std::string text = cards;
    const auto cut = [&](std::string_view front) {
        if (text.starts_with(front))
            text.erase(0, front.size());
    };
    cut("BEGIN:VCARD\nVERSION:3.0\n");
    cut("N:;;;;\n");
    return text.substr(0, text.rfind("END:VCARD\n"));
}

struct Row {
    const char *name, *card, *dialect;
};
class CardLine : public testing::TestWithParam<Row> {};

TEST_P(CardLine, isWrittenAsTheReaderTakesIt) {
    const Outcome outcome = rewritten(std::string("BEGIN:VCARD\n") + GetParam().card + "\nEND:VCARD\n");
    EXPECT_EQ(body(outcome.cards), GetParam().dialect) << outcome.told;
}

std::string named(const testing::TestParamInfo<Row> &row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(Lines, CardLine, testing::Values(
    Row{"foldedAtAnyPlace", "NI\n CKNAME:A\n\td\r\r\n  a", "NICKNAME:Ad a\n"},
    Row{"oldFoldsStandWhereABlankIs", "VERSION:2.1\nNICKNAME:Ada\n   Byron", "NICKNAME:Ada Byron\n"},
    Row{"quotedPrintableWithSoftBreaks", "NOTE;ENCODING=QUOTED-PRINTABLE:a=0D=0Ab=\nc=3D=\n", "NOTE:a\\nbc=\n"},
    Row{"aSoftBreakDoesNotEatTheEnd", "NICKNAME;QUOTED-PRINTABLE:a=", "NICKNAME:a=\n"},
    Row{"charsetByDeclaration", "NICKNAME;CHARSET=Windows-1251;ENCODING=QUOTED-PRINTABLE:=C0=E4=E0", "NICKNAME:Ада\n"},
    Row{"charsetsLeftOverAfterARecoding", "NICKNAME;CHARSET=ISO-8859-1:Zo\xC3\xAB", "NICKNAME:Zo\xC3\xAB\n"},
    Row{"shiftJisBackslashByteIsNone", "NICKNAME;CHARSET=SHIFT_JIS:\x83\x5C\x83\x5C,b", "NICKNAME:ソソ,b\n"},
    Row{"cutUtf8StaysUtf8", "NICKNAME;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=C3=91=C3=91=C3=91=C3", "NICKNAME:ÑÑÑ\xEF\xBF\xBD\n"},
    Row{"namesInAnyCaseAndGroup", "my.Org;Language=en:Acme\\, Inc.;R&D;Lab", "ORG:Acme, Inc.;R&D, Lab\n"},
    Row{"organisationWithoutUnit", "ORG:Acme", "ORG:Acme;\n"},
    Row{"shortName", "N:Doe;John", "N:Doe;John;;;\n"}, Row{"nameFromTheFormattedOne", "FN:Ada Lovelace", "N:;Ada Lovelace;;;\n"},
    Row{"companysOwnCardHasNoPerson", "FN:Acme\nORG:Acme", "ORG:Acme;\n"},
    Row{"separatorsWithinAName", "N:a\\;b:c;;;;", "N:a；b：c;;;;\n"},
    Row{"typeLists", "TEL;TYPE=\"work,voice\",cell;PREF=1:tel:+1-2", "TEL;TYPE=Mobile:+1-2\n"},
    Row{"bareTypes", "TEL;HOME;FAX:1", "TEL;TYPE=HomeFAX:1\n"}, Row{"noTypeAtAll", "tel:1", "TEL;TYPE=other:1\n"},
    Row{"labelsOfAGroup", "item1.TEL:1\nitem1.X-ABLABEL:_$!<Mobile>!$_", "TEL;TYPE=Mobile:1\n"},
    Row{"ownLabels", "a.EMAIL;type=INTERNET:x@y\na.X-ABLabel:Sailing club", "EMAIL;TYPE=Sailing club:x@y\n"},
    Row{"groupsNamedForTheirKind", "WORK.EMAIL;TYPE=internet:x@y", "EMAIL;TYPE=Work:x@y\n"},
    Row{"urlsWithAPort", "URL;type=WORK:http\\://h:80/.TEL", "item1.URL:http://h:80/.T\rEL\nitem1.X-ABLabel:_$!<Work>!$_\r\n"},
    Row{"aLabelThatNamesAnotherItem", "i.URL:http://h\ni.X-ABLabel:a.IMPP", "item1.URL:http://h\nitem1.X-ABLabel:_$!<a．IMPP>!$_\r\n"},
    Row{"addressesOutsideItems", "ADR;TYPE=dom,HOME:;;1 St.;C;S;Z;L", "item1.ADR;TYPEHome:;;1 St.;C;S;Z;L\n"},
    Row{"boxAndFloorOfAnAddress", "ADR:Box 1;2nd floor;1 St.", "item1.ADR;TYPEother:;;Box 1, 2nd floor, 1 St.;;;;\n"},
    Row{"aLabelAloneIsAnAddress", "LABEL;WORK;ENCODING=QUOTED-PRINTABLE:1 St.=0D=0ACity", "item1.ADR;TYPEWork:;;1 St., City;;;;\n"},
    Row{"messengersByScheme", "IMPP;TYPE=home:xmpp:ada@x", "IMPP;X-SERVICE-TYPE=Jabber;TYPE=other:x-apple:ada@x\n"},
    Row{"messengersByProperty", "X-SKYPE-USERNAME:ada", "IMPP;X-SERVICE-TYPE=Skype;TYPE=other:x-apple:ada\n"},
    Row{"relations", "X-SPOUSE:Eve", "item1.X-ABRELATEDNAMES:Eve\nitem1.X-ABLabel:_$!<Spouse>!$_\r\n"},
    Row{"oneTelephonesOwnItems", "X-ANDROID-CUSTOM:vnd.android.cursor.item/relation;Eve;14;;;;", "item1.X-ABRELATEDNAMES:Eve\nitem1.X-ABLabel:_$!<Spouse>!$_\r\n"},
    Row{"anniversaries", "ANNIVERSARY:20090808T1430-0500", "item1.X-ABDATE:2009-08-08\nitem1.X-ABLabel:_$!<Anniversary>!$_\r\n"},
    Row{"birthdays", "BDAY;VALUE=date-and-or-time:19800322T100000Z", "BDAY;VALUE=date:1980-03-22\n"},
    Row{"birthdaysWithoutYear", "BDAY:--0203", "BDAY;VALUE=date:--0203\n"},
    Row{"severalNotes", "NOTE:a\\, b\\\\n\nNOTE:c", "NOTE:a, b\\\\n\\nc\n"},
    Row{"aCardsEndInANote", "NOTE:END:VCARD NOTE:", "NOTE:EN\rD:VCARD NO\rTE:\n"},
    Row{"picturesInEveryForm", "PHOTO;TYPE=JPEG;ENCODING=BASE64:\n /9j/\n 4AA=\n\n", "PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AA=\n"},
    Row{"picturesWithoutIndent", "PHOTO;BASE64;GIF:\nR0lG\nODlh\n\n", "PHOTO;ENCODING=b;TYPE=JPEG:R0lGODlh\n"},
    Row{"picturesAsDataAddress", "PHOTO:data:image/gif;base64,R0lGODlh", "PHOTO;ENCODING=b;TYPE=JPEG:R0lGODlh\n"},
    Row{"aCardWithinTheCard", "AGENT:\nBEGIN:VCARD\nTEL:2\nEND:VCARD\nTEL:1", "TEL;TYPE=other:1\n"}),
    named);

struct Told {
    const char *name, *card, *told;
};
class LeftBehind : public testing::TestWithParam<Told> {};

TEST_P(LeftBehind, isTold) { EXPECT_EQ(rewritten(std::string("BEGIN:VCARD\n") + GetParam().card + "\nEND:VCARD\n").told, GetParam().told); }

INSTANTIATE_TEST_SUITE_P(Lines, LeftBehind, testing::Values(
    Told{"unknownProperties", "FN:Ada\nGEO:1;2", "1: card 1 \"Ada\" leaves behind: GEO \"1;2\"\n"},
    Told{"aNameThatSaysMore", "N:Doe;John;;;\nFN:Johnny Doe", "1: card 1 \"John Doe\" leaves behind: FN \"Johnny Doe\"\n"},
    Told{"whatIsNoProperty", "TEL:1\nrubbish", "1: card 1 \"1\" leaves behind: line 3, which is no property, \"rubbish\"\n"},
    Told{"picturesThatAreNone", "TEL:1\nPHOTO;ENCODING=b:SGVsbG8=", "1: card 1 \"1\" leaves behind: PHOTO, which is no picture,\n"},
    Told{"bookkeepingOnce", "TEL:1\nUID:1\nREV:2", "0: not carried, since only the program that wrote it needs it: REV (1), UID (1)\n"},
    Told{"anEmptyCard", "UID:1", "1: card 1 holds nothing that a contact has; it is left out\n0: not carried, since only the program that wrote it needs it: UID (1)\n"},
    Told{"aMissingEnd", "TEL:1\nBEGIN:VCARD\nTEL:2", "3: a card begins although the one above has no END:VCARD; that one ends here\n"},
    Told{"nothingWhereAllIsCarried", "TEL:1", ""}), [](const auto &row) { return std::string(row.param.name); });

TEST(CardRewriting, readsAFileInAWideCharsetByItsZeros) {
    std::string wide;
    for (const char c : std::string("BEGIN:VCARD\r\nTEL:12\r\nEND:VCARD\r\n"))
        wide += {c, '\0'};
    EXPECT_EQ(body(rewritten(wide).cards), "TEL;TYPE=other:12\n");
    EXPECT_EQ(body(rewritten("\xFF\xFE" + wide).cards), "TEL;TYPE=other:12\n");
}

TEST(CardRewriting, guessesOneCharsetFromAllTextsTogether) {
    const Outcome outcome = rewritten("BEGIN:VCARD\nN:\xCD\xF5;;;;\nNOTE:\xC4\xE3\xBA\xC3\xD6\xD0\xB9\xFA\nEND:VCARD\n");
    EXPECT_EQ(body(outcome.cards), "N:王;;;;\nNOTE:你好中国\n") << outcome.told;
}

// ---------------------------------------------------------------- what is left alone

struct Alone {
    const char *name, *card;
    bool isLeft;
};
class CardDialect : public testing::TestWithParam<Alone> {};

TEST_P(CardDialect, isLeftAloneOrNot) {
    const std::string front = "BEGIN:VCARD\r\nVERSION:3.0\r\n", back = "\r\nEND:VCARD\r\n";
    EXPECT_EQ(isCardDialect(front + GetParam().card + back), GetParam().isLeft);
}

INSTANTIATE_TEST_SUITE_P(Lines, CardDialect, testing::Values(
    Alone{"ourOwnWriters",
          "N:a;b;c;d;e\r\nFN:b a\r\nX-PHONETIC-MIDDLE-NAME:x\r\nORG:Acme;\r\nBDAY;VALUE=date:1980-01-01\r\nTEL;TYPE=Home:1\r\n"
          "EMAIL;type=INTERNET;type=Work:a@b\r\nIMPP;X-SERVICE-TYPE=AIM;TYPE=Home:x-apple:u\r\nitem1.ADR;TYPE=Home:;;s;c;;z;l\r\nitem1.X-ABADR:de\r\n"
          "URL;TYPE=Home:http://h\r\nitem2.URL:http://h:1\r\nitem2.X-ABLabel:_$!<Work>!$_\r\nitem3.X-ABDATE:2000-01-01\r\n"
          "item3.X-ABLabel:_$!<Anniversary>!$_\r\nNOTE:a\\nb\\\\c, d",
          true},
    Alone{"aFold", "NOTE:a\r\n b", false}, Alone{"anUnknownLine", "UID:1", false}, Alone{"aPlainNumber", "TEL:1", false},
    Alone{"aTypeList", "TEL;TYPE=HOME,VOICE:1", false}, Alone{"aCommaInAnOwnLabel", "TEL;TYPE=Sea, sun:1", true},
    Alone{"aNameOfFourParts", "N:a;b;;", false}, Alone{"aFormattedNameAlone", "FN:a", false}, Alone{"organisationWithoutUnit", "ORG:a", false},
    Alone{"aNameInTheFormattedOneAlone", "N:;;;;\r\nFN:a", false}, Alone{"aCompanysOwnCard", "N:;;;;\r\nFN:a\\, b\r\nORG:a, b;", true},
    Alone{"aUrlWithAPort", "URL;TYPE=Home:http://h:1/", false}, Alone{"aUrlInLowerCase", "URL;type=Home:http://h", false},
    Alone{"aSecondNote", "NOTE:a\r\nNOTE:b", false}, Alone{"anEscapedComma", "N:a\\,b;;;;", false}, Alone{"anEscapedCommaInANote", "NOTE:a\\,b", false},
    Alone{"aLabelThatNamesAnotherItem", "item1.URL:http://h\r\nitem1.X-ABLabel:_$!<a.IMPP>!$_", false},
    Alone{"aLabelOfANumber", "item1.TEL:1\r\nitem1.X-ABLabel:_$!<Main>!$_", false}, Alone{"anAddressInLowerCase", "item1.ADR;type=Home:;;s;c;;z;l", false},
    Alone{"anEncodedText", "TEL;HOME;ENCODING=QUOTED-PRINTABLE:=31", false}, Alone{"aCardsEndInANote", "NOTE:END:VCARD", false},
    Alone{"aBirthdayWithoutItsWords", "BDAY:1980-01-01", false}), [](const auto &row) { return std::string(row.param.name); });

TEST(CardDialect, needsTextThatIsUtf8AndNoMark) {
    EXPECT_FALSE(isCardDialect("\xEF\xBB\xBF" "BEGIN:VCARD\nN:a;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("BEGIN:VCARD\nN:\xFC;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("\nBEGIN:VCARD\nN:a;;;;\nEND:VCARD\n"));
    EXPECT_FALSE(isCardDialect("\x01" "BEGIN:VCARD\nN:a;;;;\nEND:VCARD\n")) << "the reader trims blanks alone";
    EXPECT_FALSE(isCardDialect(""));
}

}  // namespace

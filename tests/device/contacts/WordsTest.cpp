#include <gtest/gtest.h>

#include "device/contacts/Dates.h"
#include "device/contacts/Labels.h"

using namespace device::contacts;

namespace {

// A text as the device stores it and as the records show it, and the ways between the two that this row proves.
enum Ways { reads = 1, writes = 2, both = 3 };
struct Row {
    const char *name;
    Ways ways;
    NSString stored, shown;
};

void expectWays(const Row &row, NSString (*read)(const NSString &), NSString (*write)(const NSString &)) {
    if (row.ways & reads) {
        EXPECT_EQ(read(row.stored), row.shown);
    }
    if (row.ways & writes) {
        EXPECT_EQ(write(row.shown), row.stored);
    }
}
const auto kName = [](const auto &row) { return std::string(row.param.name); };

class Label : public testing::TestWithParam<Row> {};
TEST_P(Label, isAWordForPeople) { expectWays(GetParam(), typeOfLabel, labelOfType); }
INSTANTIATE_TEST_SUITE_P(
    Words, Label,
    testing::Values(Row{"home", both, "_$!<Home>!$_", "Home"}, Row{"homePage", both, "_$!<HomePage>!$_", "HomePage"},
                    Row{"workFax", both, "_$!<WorkFAX>!$_", "WorkFAX"}, Row{"manager", both, "_$!<Manager>!$_", "Manager"},
                    Row{"phoneModel", both, "iPhone", "iPhone"}, Row{"ownWord", both, "ski hut", "ski hut"}, Row{"empty", both, "", ""},
                    Row{"almostAWord", both, "Homes", "Homes"}, Row{"otherScript", both, "家", "家"},
                    Row{"none", reads, nullptr, "other"}, Row{"unknownWord", reads, "_$!<Boss>!$_", "Boss"}, Row{"nothingInside", reads, "_$!<>!$_", ""},
                    Row{"marksInTheMiddle", reads, "a_$!<b", "a_$!<b"}, Row{"lower", writes, "_$!<Mobile>!$_", "mobile"},
                    Row{"upper", writes, "_$!<HomeFAX>!$_", "HOMEFAX"}, Row{"mixed", writes, "_$!<Anniversary>!$_", "aNNiversary"},
                    Row{"absent", writes, nullptr, nullptr}),
    kName);

class Date : public testing::TestWithParam<Row> {};
TEST_P(Date, isADayInUTCOrStaysAsItStands) { expectWays(GetParam(), dateOfStored, storedOfDate); }
INSTANTIATE_TEST_SUITE_P(
    Words, Date,
    testing::Values(Row{"epoch", reads, "0", "2001-01-01"}, Row{"lastSecond", reads, "86399.9", "2001-01-01"}, Row{"nextDay", reads, "86400", "2001-01-02"},
                    Row{"before", reads, "-1", "2000-12-31"}, Row{"real", reads, "-547783200.000000", "1983-08-23"},
                    Row{"withoutYear", reads, "-12512664000", "1604-06-28"}, Row{"exponent", reads, "1e3", "2001-01-01"},
                    Row{"yearOne", reads, "-63113904000", "0001-01-01"}, Row{"beforeYearOne", reads, "-63113904001", "-63113904001"},
                    Row{"lastDay", reads, "252423993599", "9999-12-31"}, Row{"tooLate", reads, "252423993600", "252423993600"},
                    Row{"isoText", reads, "1980-05-06", "1980-05-06"}, Row{"words", reads, "spring", "spring"}, Row{"endless", reads, "1e400", "1e400"},
                    Row{"notANumber", reads, "nan", "nan"}, Row{"blankBehind", reads, "5x ", "5x "}, Row{"aYearAlone", both, "1985 ", "1985"}, Row{"empty", both, "", ""},
                    Row{"absent", both, nullptr, nullptr}, Row{"writtenEpoch", both, "0.0", "2001-01-01"}, Row{"writtenBefore", both, "-86400.0", "2000-12-31"},
                    Row{"leapDay", both, "-26524800.0", "2000-02-29"}, Row{"noLeapDay", writes, "2001-02-29", "2001-02-29"},
                    Row{"month13", writes, "2001-13-01", "2001-13-01"}, Row{"slashes", writes, "2001/01/01", "2001/01/01"},
                    Row{"short", writes, "2001-1-1", "2001-1-1"}, Row{"time", writes, "2001-01-01T00", "2001-01-01T00"},
                    Row{"yearZero", writes, "0000-01-01", "0000-01-01"}),
    kName);

}  // namespace

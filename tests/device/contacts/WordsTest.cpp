#include <gtest/gtest.h>

#include "device/contacts/Dates.h"
#include "device/contacts/Labels.h"

using namespace device::contacts;

namespace {

struct Row {
    const char *name;
    NSString stored, shown;
};
std::string nameOf(const testing::TestParamInfo<Row> &row) { return row.param.name; }

class LabelBothWays : public testing::TestWithParam<Row> {};
TEST_P(LabelBothWays, givesTheWordAndBack) {
    EXPECT_EQ(typeOfLabel(GetParam().stored), GetParam().shown);
    EXPECT_EQ(labelOfType(GetParam().shown), GetParam().stored);
}
INSTANTIATE_TEST_SUITE_P(Words, LabelBothWays,
                         testing::Values(Row{"home", "_$!<Home>!$_", "Home"}, Row{"homePage", "_$!<HomePage>!$_", "HomePage"},
                                         Row{"workFax", "_$!<WorkFAX>!$_", "WorkFAX"}, Row{"manager", "_$!<Manager>!$_", "Manager"},
                                         Row{"phoneModel", "iPhone", "iPhone"}, Row{"ownWord", "ski hut", "ski hut"}, Row{"empty", "", ""},
                                         Row{"almostAWord", "Homes", "Homes"}, Row{"otherScript", "家", "家"}),
                         nameOf);

class LabelReading : public testing::TestWithParam<Row> {};
TEST_P(LabelReading, takesTheMarksOff) { EXPECT_EQ(typeOfLabel(GetParam().stored), GetParam().shown); }
INSTANTIATE_TEST_SUITE_P(Words, LabelReading,
                         testing::Values(Row{"none", nullptr, "other"}, Row{"unknownWord", "_$!<Boss>!$_", "Boss"}, Row{"nothingInside", "_$!<>!$_", ""},
                                         Row{"marksInTheMiddle", "a_$!<b", "a_$!<b"}),
                         nameOf);

class LabelWriting : public testing::TestWithParam<Row> {};
TEST_P(LabelWriting, takesAnyCase) { EXPECT_EQ(labelOfType(GetParam().shown), GetParam().stored); }
INSTANTIATE_TEST_SUITE_P(Words, LabelWriting,
                         testing::Values(Row{"lower", "_$!<Mobile>!$_", "mobile"}, Row{"upper", "_$!<HomeFAX>!$_", "HOMEFAX"},
                                         Row{"mixed", "_$!<Anniversary>!$_", "aNNiversary"}, Row{"absent", nullptr, nullptr}),
                         nameOf);

class StoredDate : public testing::TestWithParam<Row> {};
TEST_P(StoredDate, isADayInUTC) { EXPECT_EQ(dateOfStored(GetParam().stored), GetParam().shown); }
INSTANTIATE_TEST_SUITE_P(Words, StoredDate,
                         testing::Values(Row{"epoch", "0", "2001-01-01"}, Row{"lastSecond", "86399.9", "2001-01-01"}, Row{"nextDay", "86400", "2001-01-02"},
                                         Row{"before", "-1", "2000-12-31"}, Row{"real", "-547783200.000000", "1983-08-23"},
                                         Row{"withoutYear", "-12512664000", "1604-06-28"}, Row{"exponent", "1e3", "2001-01-01"},
                                         Row{"leapDay", "-26524800", "2000-02-29"}, Row{"yearOne", "-63113904000", "0001-01-01"},
                                         Row{"beforeYearOne", "-63113904001", "-63113904001"}, Row{"lastDay", "252423993599", "9999-12-31"},
                                         Row{"tooLate", "252423993600", "252423993600"}, Row{"isoText", "1980-05-06", "1980-05-06"},
                                         Row{"words", "spring", "spring"}, Row{"empty", "", ""}, Row{"absent", nullptr, nullptr},
                                         Row{"endless", "1e400", "1e400"}, Row{"notANumber", "nan", "nan"}, Row{"blankBehind", "5 ", "5 "}),
                         nameOf);

class WrittenDate : public testing::TestWithParam<Row> {};
TEST_P(WrittenDate, isSecondsOrStaysAsItStands) { EXPECT_EQ(storedOfDate(GetParam().shown), GetParam().stored); }
INSTANTIATE_TEST_SUITE_P(Words, WrittenDate,
                         testing::Values(Row{"epoch", "0.0", "2001-01-01"}, Row{"before", "-86400.0", "2000-12-31"}, Row{"leapDay", "-26524800.0", "2000-02-29"},
                                         Row{"noLeapDay", "2001-02-29", "2001-02-29"}, Row{"month13", "2001-13-01", "2001-13-01"},
                                         Row{"slashes", "2001/01/01", "2001/01/01"}, Row{"short", "2001-1-1", "2001-1-1"}, Row{"time", "2001-01-01T00", "2001-01-01T00"},
                                         Row{"yearZero", "0000-01-01", "0000-01-01"}, Row{"absent", nullptr, nullptr}, Row{"empty", "", ""}),
                         nameOf);

}  // namespace

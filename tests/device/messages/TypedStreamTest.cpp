#include "device/messages/TypedStream.h"

#include <gtest/gtest.h>

#include "tests/device/TestDevice.h"

using namespace device::messages;
using namespace std::string_literals;

namespace {

std::string sample(const char *name) { return testdevice::readFile(std::string(HN_SAMPLES_DIR "/typedstream/") + name); }

std::string textOf(std::string_view archive) { return std::string(textOfTypedStream(archive).value_or("<none>")); }

const std::string kHeader = "\x04\x0Bstreamtyped\x81\xE8\x03"s;
const std::string kRoot = "\x84\x01@\x84\x84\x84\x12NSAttributedString\x00\x84\x84\x08NSObject\x00\x85"s;
const std::string kString = "\x92\x84\x84\x84\x08NSString\x01\x94\x84\x01+"s;

struct Row {
    const char *name;
    std::string archive, text;
};
class TypedStream : public testing::TestWithParam<Row> {};

TEST_P(TypedStream, givesItsText) { EXPECT_EQ(textOf(GetParam().archive), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Taken, TypedStream, testing::Values(
    Row{"plainRun", sample("AttributedBodyTextOnly"), "Noter test"},
    Row{"emptyIsNotAbsent", sample("Blank"), ""},
    Row{"severalParts", sample("MultiPart"), "\xEF\xBF\xBCtest 1\xEF\xBF\xBCtest 2 \xEF\xBF\xBCtest 3"},
    Row{"linkAttributesAreNoText", sample("URL"), "https://github.com/ReagentX/Logria"},
    Row{"lengthOfTwoBytes", kHeader + kRoot + kString + "\x81\x2C\x01"s + std::string(300, 'x') + "\x86\x86", std::string(300, 'x')},
    Row{"lengthOfFourBytes", kHeader + kRoot + kString + "\x82\x02\x00\x00\x00hi\x86\x86"s, "hi"},
    Row{"lengthOfOneByteAbove127", kHeader + kRoot + kString + "\xC8"s + std::string(200, 'y') + "\x86\x86", std::string(200, 'y')},
    Row{"textBeforeDamagedAttributes", kHeader + kRoot + kString + "\x02ok\x86\x84\x02iI\xFF\x99\x99"s, "ok"},
    Row{"classAboveItselfAndABareType", kHeader + kRoot + "\x92\x84\x84\x84\x08NSString\x00\x96+\x02hi\x86\x86"s, "hi"},
    Row{"fieldsBeforeTheText", kHeader + kRoot + "\x84\x06{x=iC}\x05\x07\x84\x04[3c]abc\x84\x04[2i]\x01\x81\x00\x01\x84\x02*!\x84\x84\x01q\x84\x01""f\x83\x00\x00\x80\x3F\x84\x01:\x84\x03sel"s +
            kString + "\x02ok\x86\x86", "ok"}),
    [](const auto &row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Refused, TypedStream, testing::Values(
    Row{"nothing", "", "<none>"},
    Row{"otherSignature", "\x04\x0Btypedstream\x81\xE8\x03"s + kRoot + kString + "\x02hi\x86\x86", "<none>"},
    Row{"otherVersion", "\x03\x0Bstreamtyped\x81\xE8\x03"s + kRoot + kString + "\x02hi\x86\x86", "<none>"},
    Row{"lengthBehindTheEnd", kHeader + kRoot + kString + "\x82\xFF\xFF\xFF\x7Fhi"s, "<none>"},
    Row{"noAttributedString", kHeader + "\x84\x01@\x84\x84\x84\x07NSArray\x00\x85\x92\x84\x84\x84\x08NSString\x01\x85\x84\x01+\x02hi\x86\x86"s, "<none>"},
    Row{"referenceToNothing", kHeader + kRoot + "\x92\xA7"s, "<none>"},
    Row{"arrayThatNeverEnds", kHeader + kRoot + "\x84\x0B[999999999!]"s, "<none>"},
    Row{"encodingThatIsNone", kHeader + kRoot + "\x84\x01?\x01"s, "<none>"},
    Row{"objectsWithoutEnd", kHeader + kRoot + [] {
            std::string nested;
            for (int i = 0; i < 100'000; ++i)
                nested += "\x92\x84\x93"s;
            return nested;
        }(), "<none>"}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(TypedStream, aCutAnywhereGivesTheWholeTextOrNone) {
    const std::string whole = sample("AttributedBodyTextOnly");
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(textOf(std::string_view(whole).substr(0, size)), size < 132 ? "<none>" : "Noter test") << size;
}

}  // namespace

#include "device/messages/Attachments.h"

#include <gtest/gtest.h>

using device::messages::AttachmentNames;

namespace {

std::string repeated(const char *text, int times) {
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

struct Row {
    const char *name;
    std::string given, made;
};
class AttachmentName : public testing::TestWithParam<Row> {};

TEST_P(AttachmentName, isMadeFit) { EXPECT_EQ(AttachmentNames().take(GetParam().given), NSString(GetParam().made)); }

INSTANTIATE_TEST_SUITE_P(Attachments, AttachmentName, testing::Values(
    Row{"plain", "IMG_0001.HEIC", "IMG_0001.HEIC"}, Row{"path", "~/Library/SMS/Attachments/aa/b c.jpg", "b c.jpg"},
    Row{"marks", "a'b\"c\\d:e*f?g<h>i|j;k$l`m.txt", "a_b_c_d_e_f_g_h_i_j;k$l`m.txt"}, Row{"controls", "a\n\x01\xC2\x85\x7F" "b", "a____b"},
    Row{"endsInASlash", "dir/", "attachment"}, Row{"dot", ".", "attachment"}, Row{"dots", "a/..", "attachment"}, Row{"threeDots", "...", "..."},
    Row{"takenByThePage", "messages.HTML", "messages (1).HTML"}, Row{"takenPicture", "Icon_quickTime.png", "Icon_quickTime (1).png"},
    Row{"failedPicture", "Messagesfailed.png", "Messagesfailed (1).png"},
    Row{"twoHundredBytesStay", repeated("x", 196) + ".jpg", repeated("x", 196) + ".jpg"},
    Row{"stemIsCut", repeated("x", 300) + ".jpeg", repeated("x", 195) + ".jpeg"},
    Row{"cutAtACharacter", repeated("中", 80) + ".jpg", repeated("中", 65) + ".jpg"},
    Row{"extensionOfSixteenBytes", repeated("x", 190) + ".fifteen-letters", repeated("x", 184) + ".fifteen-letters"},
    Row{"longerIsNoExtension", repeated("x", 190) + ".sixteen--letters", repeated("x", 190) + ".sixteen--"},
    Row{"leadingDotIsNoExtension", "." + repeated("x", 300), "." + repeated("x", 199)}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(AttachmentNames, aTakenNameGetsTheFirstFreeNumberIgnoringCase) {
    AttachmentNames names;
    std::string made;
    for (const char *name : {"a.jpg", "a (2).jpg", "A.JPG", "a.jpg", "a.jpg", ".rc", ".rc", "STRASSE", "straße", "Ärger.x", "äRGER.x", "no", "no"})
        made += names.take(name).str() + "\n";
    EXPECT_EQ(made, "a.jpg\na (2).jpg\nA (1).JPG\na (3).jpg\na (4).jpg\n.rc\n.rc (1)\nSTRASSE\nstraße\nÄrger.x\näRGER (1).x\nno\nno (1)\n");
}

TEST(AttachmentNames, aHundredThousandOfOneNameAreDoneAtOnce) {
    AttachmentNames names;
    for (int i = 0; i < 100'000; ++i)
        (void)names.take("IMG_0001.jpg");
    EXPECT_EQ(names.take("img_0001.jpg"), NSString("img_0001 (100000).jpg"));
}

}  // namespace

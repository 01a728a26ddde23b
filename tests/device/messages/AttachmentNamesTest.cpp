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

TEST(AttachmentNames, areMadeFit) {
    const struct {
        const char *name;
        std::string given, made;
    } rows[] = {
        {"plain", "IMG_0001.HEIC", "IMG_0001.HEIC"}, {"path", "~/Library/SMS/Attachments/aa/b c.jpg", "b c.jpg"},
        {"marks", "a'b\"c\\d:e*f?g<h>i|j;k$l`m.txt", "a_b_c_d_e_f_g_h_i_j;k$l`m.txt"}, {"controls", "a\n\x01\xC2\x85\x7F" "b", "a____b"},
        {"endsInASlash", "dir/", "attachment"}, {"dot", ".", "attachment"}, {"dots", "a/..", "attachment"}, {"threeDots", "...", "..."},
        {"takenByThePage", "messages.HTML", "messages (1).HTML"}, {"takenPicture", "Icon_quickTime.png", "Icon_quickTime (1).png"},
        {"failedPicture", "Messagesfailed.png", "Messagesfailed (1).png"},
        {"twoHundredBytesStay", repeated("x", 196) + ".jpg", repeated("x", 196) + ".jpg"},
        {"stemIsCut", repeated("x", 300) + ".jpeg", repeated("x", 195) + ".jpeg"},
        {"cutAtACharacter", repeated("中", 80) + ".jpg", repeated("中", 65) + ".jpg"},
        {"extensionOfSixteenBytes", repeated("x", 190) + ".fifteen-letters", repeated("x", 184) + ".fifteen-letters"},
        {"longerIsNoExtension", repeated("x", 190) + ".sixteen--letters", repeated("x", 190) + ".sixteen--"},
        {"leadingDotIsNoExtension", "." + repeated("x", 300), "." + repeated("x", 199)}};
    for (const auto &[name, given, made] : rows)
        EXPECT_EQ(AttachmentNames().take(given), NSString(made)) << name;
}

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

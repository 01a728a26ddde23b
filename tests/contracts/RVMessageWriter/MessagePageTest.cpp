#include <gtest/gtest.h>

#include <filesystem>

#include "HNManagerPlugin/contracts/RVMessageWriter/MessagePage.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/PictureConverter.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/Sha256.h"
#include "HNManagerPlugin/contracts/RVMessageWriter/ppWriterMeassagerHtml.h"
#include "tests/support/Cases.h"
#include "tests/support/TempFolder.h"

namespace {

class MessagePage : public testing::Test {
protected:
    MessagePage() {
        writer_->initWithPath_Title(NSString((folder_.path() / "out/Messages.html").string()), "Ada's <phone>");
    }
    ~MessagePage() override { PictureConverter::install({}); }
    void put(const char *name) const { writeFile(folder_.path() / "out" / name, "x"); }
    void begin() const {
        writer_->start();
        writer_->sessionStart_Type("Alan", "Message");
    }
    std::string end() const {
        writer_->sessionEnd();
        writer_->end();
        return page();
    }
    [[nodiscard]] std::string page() const { return readFile(folder_.path() / "out/Messages.html"); }
    // What stands between the conversation's heading and its end.
    static std::string body(const std::string &page) {
        const std::size_t from = page.find("</small></h2>\n") + 14;
        return page.substr(from, page.find("</section>") - from);
    }
    [[nodiscard]] std::string names() const {
        std::string all;
        for (const auto &entry : std::filesystem::directory_iterator(folder_.path() / "out"))
            all += entry.path().filename().string() + "\n";
        return all;
    }

    TempFolder folder_;
    std::shared_ptr<ppWriterMeassagerHtml> writer_ = alloc<ppWriterMeassagerHtml>();
};

TEST_F(MessagePage, daysStandBetweenMessagesAndTimesWithin) {
    begin();
    writer_->dateMiddle("2024-03-05 10:20:30");
    writer_->messagesLeft("a");
    writer_->dateMiddle("2024-03-05 23:59:59");
    writer_->messagesRight("b");
    writer_->dateMiddle("2024-03-06 00:00:00");
    writer_->messagesFailed("c");
    writer_->messagesLeft("without a date");
    EXPECT_EQ(body(end()), readFile(HN_SAMPLES_DIR "/cases/pageOfTwoDays.html"));
}

TEST_F(MessagePage, noTextIsMarkup) {
    writer_->start();
    writer_->sessionStart_Type("<b>&\"'", "<i>");
    writer_->dateMiddle("<u>");
    writer_->messagesLeft("</div><script>alert(1)</script>");
    writer_->leftImageSuccess("\"><script>.png");
    writer_->leftAudio_Content("'><script>.mov", "<s>");
    const std::string page = end();
    EXPECT_NE(page.find("Ada&#39;s &lt;phone&gt;"), std::string::npos);
    for (const char *tag : {"<b>", "<i>", "<u>", "<s>"})
        EXPECT_EQ(page.find(tag), std::string::npos) << tag;
    EXPECT_EQ(page.find("<script>"), page.rfind("<script>")) << "the page's own alone";
}

TEST(MessageText, standsInThePage) {
    for (const Case &row : casesOf("cases/pageTexts.txt")) {
        std::string out;
        messagePage::appendLinked(out, row.parts[0]);
        EXPECT_EQ(out, row.parts[1]) << row.name;
    }
}

TEST_F(MessagePage, aHeicPictureGetsAJpegUnderAFreeName) {
    std::string converted;
    PictureConverter::install([&](const NSString &from, const NSString &to) {
        converted += from.lastPathComponent().str() + " to " + to.lastPathComponent().str() + "\n";
        writeFile(to.str(), "jpeg");
        return true;
    });
    begin();
    put("a b.HEIC");
    put("a b.HEIC.jpg");
    put("a b.HEIC (1).jpg");
    writer_->rightImageSuccess("a b.HEIC");
    const std::string page = end();
    EXPECT_EQ(converted, "a b.HEIC to a b.HEIC (2).jpg\n");
    EXPECT_NE(page.find("<a href=\"a%20b.HEIC\"><img class=\"p\" loading=\"lazy\" decoding=\"async\" src=\"a%20b.HEIC%20%282%29.jpg\""),
              std::string::npos);
}

TEST_F(MessagePage, aFileThatNoBrowserShowsIsLinkedWithItsSize) {
    begin();
    put("a.tiff");
    put("b.heic");   // without a converter
    writer_->leftImageSuccess("a.tiff");
    writer_->leftImageSuccess("b.heic");
    writer_->leftImageSuccess("none.jpg");
    writer_->leftImageSuccess("../Messages.html");
    const std::string page = end();
    EXPECT_EQ(page.find("<img class=\"p\""), std::string::npos);
    EXPECT_NE(page.find("<a href=\"a.tiff\"><bdi>a.tiff</bdi></a> 1"), std::string::npos);
    EXPECT_NE(page.find("<a href=\"b.heic\">"), std::string::npos);
    EXPECT_NE(page.find("<bdi>none.jpg</bdi> MessagePage_Missing"), std::string::npos);
    EXPECT_NE(page.find("<bdi>../Messages.html</bdi> MessagePage_Missing"), std::string::npos);
}

TEST_F(MessagePage, isThereWholeOrNotAtAll) {
    begin();
    put("Messages.html");
    for (int count = 0; count < 20'000; ++count)
        writer_->messagesLeft("a text of some length, so that the page does not stay in memory until its end");
    EXPECT_EQ(page(), "x") << "the older page";
    writer_ = nullptr;
    EXPECT_EQ(names(), "Messages.html\n") << "nothing is left of a page that was given up";
    EXPECT_EQ(page(), "x");
}

TEST_F(MessagePage, failsWhereItsFolderCannotBe) {
    writeFile(folder_.path() / "out", "a file");
    begin();
    writer_->messagesLeft("a");
    writer_->sessionEnd();
    writer_->end();
    EXPECT_TRUE(writer_->hasFailed());
}

TEST_F(MessagePage, listsConversationsWithTheirNumberAndLastDay) {
    begin();
    writer_->dateMiddle("2024-03-05 10:20:30");
    writer_->messagesLeft("a");
    writer_->messagesLeft("b");
    writer_->sessionEnd();
    writer_->sessionStart_Type("", "Message");
    const std::string page = end();
    EXPECT_NE(page.find("<li><a href=\"#t1\"><bdi>Alan</bdi><small>2 \xC2\xB7 2024-03-05</small></a></li>"), std::string::npos);
    EXPECT_NE(page.find("<li><a href=\"#t2\"><bdi>MessagePage_NoName</bdi><small>0</small></a></li>"), std::string::npos);
    EXPECT_NE(page.find("<section id=\"t2\">"), std::string::npos);
}

TEST(MessagePagePolicy, namesTheOnlyScriptAndStyleByTheirHash) {
    EXPECT_EQ(sha256Base64(""), "47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
    EXPECT_EQ(sha256Base64("abc"), "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=");
    // Lengths around the end of a block, where the padding takes a second one.
    EXPECT_EQ(sha256Base64(std::string(55, 'a')), "n0OQ+NMMLdkuyfCVtl4rmumwqSWlJY4kHJ8ekQ9zQxg=") << "55";
    EXPECT_NE(messagePage::policy().find("default-src 'none'"), std::string::npos);
}

TEST(MessagePageEmoji, showLargeWhereTheyStandAlone) {
    for (const char *text : {"\xF0\x9F\x98\x80", "\xE2\x9D\xA4\xEF\xB8\x8F", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA9"})
        EXPECT_TRUE(messagePage::isEmojiOnly(text)) << text;
    for (const char *text : {"", "a", "\xF0\x9F\x98\x80 ok", "\xE4\xB8\xAD"})
        EXPECT_FALSE(messagePage::isEmojiOnly(text)) << text;
}

}  // namespace

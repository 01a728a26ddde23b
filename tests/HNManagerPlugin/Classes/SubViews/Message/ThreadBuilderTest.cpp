// Threads and their rows out of parsed chats.
#include <gtest/gtest.h>

#include <random>

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/MessageTexts.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/ThreadBuilder.h"
#include "tests/support/PluginWorld.h"
#include "tests/support/fake/Backup.h"

using namespace std::chrono_literals;

namespace {

std::string textOf(const NSString &text) { return text ? text.str() : "-"; }

class ThreadBuilding : public testing::Test {
protected:
    std::shared_ptr<HNMessageEntity> build(const std::shared_ptr<MessageBackupChat> &chat) {
        return ThreadBuilder(book_->stored).threadOf(*chat);
    }
    // "time 2024-01-01 00:00:00", "text hello", "failed MessageView_NotDeliver"; a row each.
    static std::string rows(const HNMessageEntity &thread) {
        std::string text;
        for (const id &object : thread.messageArray->snapshot()) {
            const auto &row = dynamic_cast<const HNDetailMessage &>(*object);
            text += (text.empty() ? "" : "|") + (row.isTimeOnly     ? "time " + textOf(row.date)
                                                 : row.isFailedOnly ? "failed " + textOf(row.content)
                                                                    : "text " + textOf(row.content));
        }
        return text;
    }
    static const HNDetailMessage &row(const HNMessageEntity &thread, std::size_t index) {
        return dynamic_cast<const HNDetailMessage &>(*thread.messageArray->objectAtIndex(index));
    }
    static std::string picture(const HNMessageEntity &thread) {
        return thread.contactPic ? thread.contactPic->description().str() : "none";
    }

    PluginWorld world_;
    std::shared_ptr<FakeAddressBook> book_ = make<FakeAddressBook>();
};

TEST_F(ThreadBuilding, anHourBetweenTwoMessagesMakesATimeRow) {
    const auto chat = chatOf(1, {"7"}, {{"a", 0}, {"b", 3600}, {"c", 7199}, {"d", 10}, {"e", 3610}});
    chat->date[3] = chat->date[2] + 3599900ms;
    chat->date[4] = chat->date[3] - 2h;   // clocks go back too
    EXPECT_EQ(rows(*build(chat)), "time 2024-01-01 00:00:00|text a|time 2024-01-01 01:00:00|text b|text c|text d|text e");
}

TEST_F(ThreadBuilding, aFailedMessageIsFollowedByACaptionWithoutDateAndSender) {
    const auto thread = build(chatOf(1, {"7"}, {{.content = "x", .isSend = true, .isFailed = true}}));
    EXPECT_EQ(rows(*thread), "time 2024-01-01 00:00:00|text x|failed MessageView_NotDeliver");
    EXPECT_TRUE(row(*thread, 0).isSend);
    EXPECT_EQ(row(*thread, 1).date, "2024-01-01 00:00:00");
    EXPECT_TRUE(row(*thread, 2).date.isNil());
    EXPECT_TRUE(row(*thread, 2).personSend.isNil());
    EXPECT_FALSE(row(*thread, 2).isSend);
    EXPECT_EQ(thread->contents, "x");   // the caption is no message
}

TEST_F(ThreadBuilding, aCaptionReplacesTheTextOfAnyRowWithATypeWord) {
    const auto thread = build(chatOf(1, {"7"},
                                     {{.content = " /b/photo.png\n", .isAttachment = true, .type = "image/png", .fileName = "p.png"},
                                      {.content = "no attachment", .type = ""},
                                      {.content = "/b/file", .isAttachment = true},
                                      {.content = "/b/talk.amr", .isAttachment = true, .type = "AUDIO/amr"}}));
    EXPECT_EQ(rows(*thread),
              "time 2024-01-01 00:00:00|text MessageView_1Photo|text MessageView_1File|text /b/file|text MessageView_1File");
    EXPECT_EQ(row(*thread, 1).attachmentBackupPath, "/b/photo.png");
    EXPECT_EQ(row(*thread, 1).attachmentIcon, nullptr);   // no such file
    EXPECT_TRUE(row(*thread, 2).attachmentBackupPath.isNil());
    EXPECT_EQ(row(*thread, 3).attachmentIcon, nullptr);
    EXPECT_EQ(row(*thread, 4).attachmentIcon->description(), "icon_Music_Attachments");
    EXPECT_EQ(thread->contents, "MessageView_1File");
}

TEST_F(ThreadBuilding, theSummaryIsTheTrimmedTextOfTheLastMessage) {
    EXPECT_EQ(build(chatOf(1, {"7"}, {{"a"}, {" \n two\nlines \t"}}))->contents, "two\nlines");
    EXPECT_EQ(textOf(build(chatOf(1, {"7"}, {{"a"}, {NSString()}}))->contents), "");
    const auto empty = build(chatOf(5, {"7"}, {}));
    EXPECT_TRUE(empty->contents.isNil());
    EXPECT_TRUE(empty->messageTime.isNil());
    EXPECT_TRUE(empty->messageArray->isEmpty());
    EXPECT_EQ(empty->key(), "5");
}

TEST_F(ThreadBuilding, itsTitleNamesTheParticipants) {
    const struct {
        const char *name;
        std::vector<NSString> persons;
        NSString groupTitle;
        const char *title, *picture;
    } rows[] = {{"knownWithoutPicture", {"8"}, {}, "Bob", "icon_list_user"},
                {"firstContactWins", {"551234"}, {}, "Ann", "icon_list_user"},
                {"blanksAreNotTakenOff", {"+49301"}, {}, "+49301", "icon_list_user"},
                {"onlyTheStoredNumberIsStripped", {"55-1234"}, {}, "55-1234", "icon_list_user"},
                {"group", {"8", "9"}, {}, "Bob, 9", "icon_list_user_more"},
                {"groupWithItsOwnTitle", {"8", "9"}, "Team", "Team", "icon_list_user_more"},
                {"emptyTitleIsNone", {"8", "9"}, "", "Bob, 9", "icon_list_user_more"},
                {"titleOfASingleChatIsNotLookedAt", {"8"}, "Team", "Bob", "icon_list_user"},
                {"nobody", {}, "Team", "", "none"}};
    book_->add("Ann", {"+49 30-1", "55-12\u00A034"});
    book_->add("Bob", {"551234", "8"});
    for (const auto &row : rows) {
        const auto chat = chatOf(1, row.persons, {{"x"}});
        chat->chatTitle = row.groupTitle;
        const auto thread = build(chat);
        EXPECT_EQ(thread->contactName, row.title) << row.name;
        EXPECT_EQ(picture(*thread), row.picture) << row.name;
        EXPECT_EQ(thread->isGroupCommunication, row.persons.size() > 1) << row.name;
    }
}

TEST_F(ThreadBuilding, aKnownPersonOfASingleChatShowsTheirPicture) {
    book_->add("Ann", {"7"});
    book_->stored[0]->setImage_data(NSImage::named("icon_pdf"));
    EXPECT_EQ(picture(*build(chatOf(1, {"7"}, {{"x"}}))), "icon_pdf");
}

TEST_F(ThreadBuilding, sendersAreNamedByTheAddressBook) {
    book_->add("Ann", {"7"});
    const auto thread = build(chatOf(1, {"7"}, {{.content = "x", .personSend = "7"}, {.content = "y", .personSend = "07"}, {"z"}}));
    EXPECT_EQ(row(*thread, 1).personName, "Ann");
    EXPECT_EQ(row(*thread, 1).personSend, "7");
    EXPECT_EQ(row(*thread, 2).personName, "07");
    EXPECT_EQ(textOf(row(*thread, 3).personName), "");
}

TEST_F(ThreadBuilding, fewerCallerNumbersThanMessagesLeaveTheLastOnesWithout) {
    const auto thread = build(chatOf(1, {"7"}, {{.content = "x", .callerID = "+1"}, {"y"}}));
    EXPECT_EQ(row(*thread, 1).callerID, "+1");
    EXPECT_TRUE(row(*thread, 2).callerID.isNil());
    EXPECT_EQ(thread->callerID, std::vector<NSString>{"+1"});
}

// ---------------------------------------------------------------- names by index

// The walk that the index stands for.
const ZpContactDataInfo *byWalking(const ContactList &contacts, const NSString &number) {
    for (const auto &contact : contacts)
        for (const auto &stored : contact->phone_numbers())
            if (stored.phone_number && messageTexts::bareNumber(stored.phone_number) == number)
                return contact.get();
    return nullptr;
}

TEST_F(ThreadBuilding, theIndexAnswersAsAWalkOverAllContactsDoes) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto number = [&] {
        static const std::vector<std::string> kPieces = {"1", "2", "-", "\u00A0", " ", "+"};
        std::string text;
        for (auto length = random() % 5; length > 0; --length)
            text += kPieces[random() % kPieces.size()];
        return random() % 20 == 0 ? NSString() : NSString(text);
    };
    for (int i = 0; i < 300; ++i) {
        std::vector<NSString> numbers;
        for (auto count = random() % 4; count > 0; --count)
            numbers.push_back(number());
        book_->add("P", numbers);
    }
    const NumberIndex index(book_->stored);
    int found = 0;
    for (int i = 0; i < 2000; ++i) {
        const NSString asked = number();
        const auto *expected = asked ? byWalking(book_->stored, asked) : nullptr;
        ASSERT_EQ(index.contactOf(asked), expected) << textOf(asked);
        found += expected != nullptr;
    }
    EXPECT_GT(found, 100);
}

// ---------------------------------------------------------------- kinds of attachments

TEST(AttachmentKind, followsItsTypeWord) {
    const PluginWorld world;
    const struct {
        const char *type, *icon, *caption;
    } rows[] = {{"image/heic", "own", "Photo"}, {"com.compuserve.gif", "own", "Photo"}, {"public.PNG", "own", "Photo"}, {"6", "own", "Photo"},
                {"66", "icon_photo", "File"}, {"image/text", "own", "Photo"}, {"picture+video", "own", "Photo"},
                {"video/audio", "icon_Video_Attachments", "Video"}, {"com.apple.quicktime-MOVIE", "icon_Video_Attachments", "Video"},
                {"application/vnd.apple.pkpass", "icon_txt", "File"}, {"text/pdf", "icon_txt", "File"}, {"application/pdf", "icon_pdf", "PDF"},
                {"audio/voice", "icon_Music_Attachments", "File"}, {"voice.memo", "icon_voice_memos", "File"},
                {"application/powerpoint", "icon_ppt", "PPT"}, {"x.wordprocessingml.document", "icon_word", "WORD"},
                {"application/msword", "icon_photo", "File"}, {"application/vnd.ms-excel", "icon_excel", "EXCEL"},
                {"x.spreadsheetml.sheet", "icon_excel", "EXCEL"}, {"vcf", "icon_people", "CONTACT"}, {"csv", "icon_people", "CONTACT"},
                {"", "icon_photo", "File"}};
    for (const auto &[type, icon, caption] : rows) {
        const auto row = make<HNDetailMessage>();
        AttachmentMarks().classify(type, *row);
        EXPECT_EQ(row->attachmentIcon ? row->attachmentIcon->description() : NSString("own"), icon) << type;
        EXPECT_EQ(row->content, std::string("MessageView_1") + caption) << type;
    }
}

// ---------------------------------------------------------------- texts

TEST(MessageTexts, timesAreUtcAndSortAsText) {
    const auto at = [](std::int64_t seconds) { return messageTexts::stringFromDate(dispatch::Time(std::chrono::seconds(seconds))).str(); };
    EXPECT_EQ(at(0), "1970-01-01 00:00:00");
    EXPECT_EQ(at(1'709'251'199), "2024-02-29 23:59:59");
    EXPECT_EQ(at(-1), "1969-12-31 23:59:59");
    EXPECT_EQ(messageTexts::stringFromDate(dispatch::Time(1'704'067'200'999'999'999ns)).str(), "2024-01-01 00:00:00");
}

TEST(MessageTexts, onlyHardBlanksAndHyphensAreTakenOffANumber) {
    EXPECT_EQ(messageTexts::bareNumber("+49\u00A030-12 34"), "+493012 34");
    EXPECT_EQ(messageTexts::bareNumber("(030)"), "(030)");
}

}   // namespace

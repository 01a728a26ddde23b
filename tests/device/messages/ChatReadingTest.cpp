#include <gtest/gtest.h>

#include "device/BackupFolder.h"
#include "tests/device/messages/TestMessages.h"
#include "tests/support/Cases.h"
#include "tests/support/TestBackup.h"

using namespace testdevice;
using namespace std::string_literals;

namespace {

constexpr const char *kTwoPeople = "INSERT INTO handle (ROWID, id, service) VALUES (1, '+15550001', 'iMessage'), (2, '+15550002', 'SMS');"
                                   "INSERT INTO chat (ROWID, guid, account_login, service_name) VALUES (1, 'c1', 'P:+1999', 'iMessage');"
                                   "INSERT INTO chat_handle_join VALUES (1, 2), (1, 1);";

std::string joined(int messages) {
    std::string sql;
    for (int i = 1; i <= messages; ++i)
        sql += "INSERT INTO chat_message_join (chat_id, message_id) VALUES (1, " + std::to_string(i) + ");";
    return sql;
}

// The lines of the first chat, without the chat's own.
std::string elements(const std::string &sql, int messages) {
    const std::string lines = TestMessages(kTwoPeople + sql + joined(messages)).chats();
    return lines.substr(lines.find('\n') + 1);
}

TEST(ChatReading, readsADatabaseThatNobodyHereMade) {
    const TestMessages image(std::filesystem::path(HN_SAMPLES_DIR "/messages/messages.1.sms.db"));
    image.addAttachment("aa/00/FX-GUID/photo.jpg", "jpeg");
    EXPECT_EQ(image.chats(), readFile(HN_SAMPLES_DIR "/messages/messages.1.sms.db.expected.txt"));
}

class EveryVersion : public testing::TestWithParam<MessageVersion> {};

TEST_P(EveryVersion, isRead) {
    const MessageVersion &version = GetParam();
    const TestMessages image(std::string(kTwoPeople) +
        "INSERT INTO message (ROWID, guid, text, handle_id, date, is_from_me, error) VALUES "
        "(1, 'm1', 'later', 0, 500000002, 1, 22), (2, 'm2', 'earlier', 2, 500000001, 0, 22), (3, 'm3', NULL, 1, 500000003, 0, 0);"
        "INSERT INTO attachment (ROWID, guid, " + (version.name == "newest"s ? "original_guid, " : "") + "filename, uti) VALUES (7, 'a7', " +
        (version.name == "newest"s ? "'o7', " : "") + "'/var/mobile/Library/SMS/Attachments/01/Dog.png', 'public.png');"
        "INSERT INTO message_attachment_join VALUES (3, 7);" + joined(3) + (version.hasTitles ? "UPDATE chat SET display_name = 'Walk';" : "") +
        (version.hasCallers ? "UPDATE message SET destination_caller_id = '+1777' WHERE ROWID = 2;" : "") +
        (version.hasNames ? "UPDATE attachment SET transfer_name = 'Cat.png';" : ""), version);
    image.addAttachment("01/Dog.png", "png");
    EXPECT_EQ(image.chats(), "chat 1 P:+1999 [iMessage] "s + (version.hasTitles ? "Walk" : "-") + " with +15550001 +15550002\n"
                             "1478307201 m2 from +15550002 by " + (version.hasCallers ? "+1777" : "-") + ": earlier\n"
                             "1478307202 m1 sent failed by -: later\n"
                             "1478307203 m3 from +15550001 by - file " + (version.hasNames ? "Cat.png" : "Dog.png") +
                             " public.png: /MediaDomain/Library/SMS/Attachments/01/Dog.png\n");
}

INSTANTIATE_TEST_SUITE_P(Messages, EveryVersion, testing::ValuesIn(messageVersions()), [](const auto &row) { return std::string(row.param.name); });

TEST(ChatReading, eachKindOfMessageGivesItsText) {
    for (const Case &row : casesOf("cases/messageTexts.txt"))
        EXPECT_EQ(elements("INSERT INTO message (ROWID, guid, text, attributedBody, date, item_type, associated_message_type) VALUES (1, 'm', " +
                               row.parts[0] + ");", 1),
                  row.parts[1] + (row.parts[1].empty() ? "" : "\n")) << row.name;
}

TEST(ChatReading, chatsInWhichNothingIsLeftAreNoRecords) {
    EXPECT_EQ(TestMessages(std::string(kTwoPeople) + "INSERT INTO message (ROWID, guid, text, item_type) VALUES (1, 'm', 'a', 2);" + joined(1)).chats(), "");
}

TEST(ChatReading, aMessageStandsInEveryChatThatHasItAndOnceInEach) {
    TestMessages image(std::string(kTwoPeople) + "INSERT INTO chat (ROWID, guid) VALUES (5, 'c5');"
                       "DROP TABLE chat_message_join; CREATE TABLE chat_message_join (chat_id INTEGER, message_id INTEGER);"
                       "INSERT INTO chat_message_join VALUES (1, 1), (5, 1), (1, 1), (9, 1), (1, 44);"
                       "INSERT INTO message (ROWID, guid, text, date) VALUES (1, 'm', 'a', 1);");
    EXPECT_EQ(image.chats(), "chat 1 P:+1999 [iMessage] - with +15550001 +15550002\n978307201 m from - by -: a\n"
                             "chat 5 - [] - with\n978307201 m from - by -: a\n");
}

TEST(ChatReading, attachmentsComeByRowBeforeTheTextAndOnlyFromTheirFolder) {
    const TestMessages image(readFile(HN_SAMPLES_DIR "/messages/attachments.sql"));
    image.addAttachment("one.bin", "1");
    ASSERT_NE(image.chats(), "");
    EXPECT_EQ(image.chats(), readFile(HN_SAMPLES_DIR "/messages/attachments.expected.txt"));
}

TEST(ChatReading, aDatabaseWithoutOptionalTablesIsStillRead) {
    EXPECT_EQ(TestMessages(std::string(kTwoPeople) + "DROP TABLE attachment; DROP TABLE handle; DROP TABLE chat_handle_join; DROP TABLE message_attachment_join;"
                           "INSERT INTO message (ROWID, guid, text, date) VALUES (1, 'm', 'a', 1);" + joined(1)).chats(),
              "chat 1 P:+1999 [iMessage] - with\n978307201 m from - by -: a\n");
}

TEST(ChatReading, whatIsNoMessageDatabaseIsAFailureThatNamesIt) {
    const TestMessages old("DROP TABLE chat;", messageVersions().front());
    EXPECT_EQ(old.chats(), "! " + old.database().string() + "\n");
    write(old.database(), "no database at all, just text");
    EXPECT_EQ(old.chats(), "! " + old.database().string() + "\n");
    std::filesystem::remove(old.database());
    EXPECT_EQ(old.chats(), "");
}

// Pages of the file are overwritten one at a time: whatever breaks, most messages stay, and the reading ends.
TEST(ChatReading, aBrokenPageCostsOnlyWhatLiesOnIt) {
    std::string sql = "INSERT INTO handle (ROWID, id, service) VALUES (1, '+1', 'SMS');"
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) INSERT INTO chat (ROWID, guid, account_login) SELECT i, 'c' || i, "
                      "hex(zeroblob(100)) FROM n; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4000) INSERT INTO message (ROWID, guid, text, "
                      "date) SELECT i, 'm' || i, 'text ' || i, i FROM n; INSERT INTO chat_message_join (chat_id, message_id) SELECT ROWID % 200 + 1, ROWID FROM message;";
    const TestMessages image(sql);
    const std::string whole = readFile(image.database());
    constexpr std::size_t kPage = 4096;
    std::size_t lost = 0, told = 0, pages = 0;
    for (std::size_t page = 1; page < whole.size() / kPage; page += 3, ++pages) {
        std::string broken = whole;
        for (std::size_t i = 0; i < kPage; ++i)
            broken[page * kPage + i] = '\xAB';
        write(image.database(), broken);
        device::messages::MessageStore store(image.open());
        std::size_t kept = 0;
        for (const auto &chat : chatsOf(store))
            kept += chat->content.size();
        lost += 4000 - std::min<std::size_t>(kept, 4000);
        told += kept < 4000 && store.failures().first() ? 1 : 0;
        EXPECT_TRUE(kept == 4000 || store.failures().first()) << page;
    }
    EXPECT_LT(lost, pages * 400);   // a root page takes its whole table with it
    EXPECT_GT(told, pages / 4);
}

TEST(ChatReading, aBackupGivesTheSameAsTheImage) {
    const TestMessages image(std::filesystem::path(HN_SAMPLES_DIR "/messages/messages.1.sms.db"));
    image.addAttachment("aa/00/FX-GUID/photo.jpg", "jpeg");
    const TestBackup backup;
    backup.add("HomeDomain", "Library/SMS/sms.db", readFile(image.database()));
    backup.add("MediaDomain", "Library/SMS/Attachments/aa/00/FX-GUID/photo.jpg", "jpeg");
    const std::string before = pictureOf(backup.path());
    device::messages::MessageStore store(std::make_shared<device::BackupFolder>(backup.path()), "/some/where");
    Chats chats = chatsOf(store);
    ASSERT_EQ(chats.size(), 2u);
    EXPECT_EQ(chats[1]->content[1], NSString("/some/where/a8/a84866a06bef626ef31467fe2d7de759a85f2011"));
    chats[1]->content[1] = NSString("/MediaDomain/Library/SMS/Attachments/aa/00/FX-GUID/photo.jpg");
    EXPECT_EQ(described(chats), image.chats());
    EXPECT_EQ(pictureOf(backup.path()), before);
}

// Read together or one at a time, chats come with the same messages in the same order.
TEST(ChatReading, itDoesNotMatterHowManyChatsAreReadTogether) {
    std::string sql = kTwoPeople;
    for (int chat = 2; chat < 12; ++chat)
        sql += "INSERT INTO chat (ROWID, guid) VALUES (" + std::to_string(chat) + ", 'd" + std::to_string(chat) + "');";
    sql += "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300) INSERT INTO message (ROWID, guid, text, date) SELECT i, 'm' || i, "
           "'text ' || i, i * 7919 % 50 FROM n; INSERT INTO chat_message_join (chat_id, message_id) SELECT ROWID * 31 % 11 + 1, ROWID FROM message;"
           "INSERT INTO chat_message_join (chat_id, message_id) SELECT 5, ROWID FROM message WHERE ROWID % 3 = 0 AND ROWID * 31 % 11 != 4;";
    const TestMessages image(sql);
    const std::string all = image.chats();
    EXPECT_EQ(std::ranges::count(all, '\n'), 11 + 300 + 91);
    for (const std::size_t together : {1, 30, 100}) {
        device::sqlite::Database database = image.open()->openForReading({"HomeDomain", "Library/SMS/sms.db"});
        device::FailureLog failures;
        Chats chats;
        device::messages::ChatReader(database, [](const auto &) { return NSString(); }, failures, together).read([&](auto chat, float) {
            chats.push_back(std::move(chat));
            return true;
        });
        EXPECT_EQ(described(chats), all) << together;
    }
}

TEST(ChatReading, theTakerEndsTheReading) {
    const TestMessages image(std::filesystem::path(HN_SAMPLES_DIR "/messages/messages.1.sms.db"));
    device::messages::MessageStore store(image.open());
    std::string seen;
    EXPECT_TRUE(store.readChats([&](const auto &chat, float progress) {
        seen += std::to_string(chat->chatID) + " " + std::to_string(progress);
        return false;
    }));
    EXPECT_EQ(seen, "1 0.500000");
}

}  // namespace

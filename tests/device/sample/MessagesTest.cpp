#include <gtest/gtest.h>

#include "device/Open.h"
#include "device/picture/Jpeg.h"
#include "device/sample/Sample.h"
#include "tests/device/messages/TestMessages.h"

using namespace testdevice;

namespace {

class SampleMessages : public testing::Test {
protected:
    SampleMessages() {
        device::sample::createSampleImage(folder.path() / "sample");
        store.emplace(device::openDevice(folder.path() / "sample"));
        chats = chatsOf(*store);
    }
    TempFolder folder;
    std::optional<device::messages::MessageStore> store;
    Chats chats;
};

TEST_F(SampleMessages, holdThreadsOfEveryKind) {
    EXPECT_FALSE(store->failures().first());
    std::string shown;
    for (const auto &chat : chats)
        shown += chat->serviceName.at(0).str() + " " + std::to_string(chat->personJoin.size()) + " " + std::to_string(chat->content.size()) + " " + chat->chatTitle.str() + "\n";
    EXPECT_EQ(shown, "iMessage 1 12 \niMessage 3 12 Naxos in June\nSMS 1 4 \niMessage 1 3 \niMessage 1 3 \nSMS 1 3 \nSMS 2 2 \n");
    EXPECT_EQ(std::ranges::count(chats[0]->isFailed, true), 1);
    EXPECT_EQ(chats[3]->content[2], NSString("对,五楼。"));
    EXPECT_EQ(chats[0]->content[5], NSString("and this is how she sails"));
}

TEST_F(SampleMessages, carryFilesThatOpen) {
    std::map<std::string, std::string> starts;
    for (const auto &chat : chats)
        for (std::size_t i = 0; i < chat->content.size(); ++i)
            if (chat->isAttachment[i])
                starts[chat->attachmentFileName[i].str()] = chat->content[i].isNil() ? "missing" : readFile(chat->content[i].str()).substr(0, 4);
    EXPECT_EQ(starts, (std::map<std::string, std::string>{{"IMG_0412.JPG", "\xFF\xD8\xFF\xE0"}, {"IMG_0412 (1).JPG", "\xFF\xD8\xFF\xE0"},
                                                           {"IMG_0412 (2).JPG", "\xFF\xD8\xFF\xE0"}, {"IMG_0413.HEIC", std::string("\0\0\0\x1C", 4)},
                                                           {"Audio Message.wav", "RIFF"}, {"Ferry_s timetable; summer.pdf", "%PDF"},
                                                           {"Eleni Papadaki.vcf", "BEGI"}, {"IMG_0420.MOV", "missing"}}));
    const auto heic = device::picture::decodedHeif(readFile(chats[0]->content[4].str()));
    ASSERT_TRUE(heic);
    EXPECT_EQ(heic->width, 160);
}

TEST_F(SampleMessages, areFoundByTheNumbersOfTheSampleContacts) {
    const auto book = device::contacts::AddressBookStore::open(device::openDevice(folder.path() / "sample"));
    book->getContactDataFromAddressList();
    std::string numbers;
    for (const auto &contact : book->contactArray())
        for (const auto &phone : contact->phone_numbers())
            numbers += phone.phone_number.stringByReplacingOccurrencesOfString_withString("\u00A0", "").stringByReplacingOccurrencesOfString_withString("-", "").str() + "\n";
    for (const char *number : {"+46701740605\n", "+8613800138000\n", "+966551234567\n", "+353871234567\n", "+491515550160\n", "5550100\n", "5550142\n"})
        EXPECT_NE(numbers.find(number), std::string::npos) << number;
}

TEST_F(SampleMessages, comeOnceToAnImageThatKnewNoMessages) {
    device::ImageFolder image(folder.path() / "sample");
    device::PropertyList properties = image.properties();
    properties.setTexts("SampleKinds", {"Bookmarks", "Contacts"});
    std::filesystem::remove_all(folder.path() / "sample/HomeDomain/Library/SMS");
    std::filesystem::remove_all(folder.path() / "sample/MediaDomain");
    {
        const device::WriterLock lock = image.lockForWriting();
        image.setProperties(lock, properties);
    }
    device::sample::addMissingKinds(image);
    EXPECT_EQ(described(chatsOf(*store)), described(chats));
    execOn(folder.path() / "sample/HomeDomain/Library/SMS/sms.db", "DELETE FROM message");
    device::sample::addMissingKinds(image);
    EXPECT_TRUE(chatsOf(*store).empty());
}

}  // namespace

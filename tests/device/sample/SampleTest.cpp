#include "device/sample/Sample.h"

#include <gtest/gtest.h>

#include "device/Open.h"
#include "device/picture/Jpeg.h"
#include "tests/device/messages/TestMessages.h"

using namespace testdevice;

namespace {

class Sample : public testing::Test {
protected:
    void createSample() const { device::sample::createSampleImage(path); }
    [[nodiscard]] std::shared_ptr<device::contacts::AddressBookStore> book() const {
        const auto store = device::contacts::AddressBookStore::open(device::openDevice(path));
        store->getContactDataFromAddressList();
        EXPECT_FALSE(store->failures().first());
        return store;
    }
    [[nodiscard]] Chats chats() const {
        device::messages::MessageStore store(device::openDevice(path));
        return chatsOf(store);
    }
    // Makes the kinds that are missing in an image that had these when it was made.
    void addMissingTo(const std::vector<std::string> &kinds) const {
        device::ImageFolder image(path);
        device::PropertyList properties = image.properties();
        properties.setTexts("SampleKinds", kinds);
        {
            const device::WriterLock lock = image.lockForWriting();
            image.setProperties(lock, properties);
        }
        device::sample::addMissingKinds(image);
    }
    void addMissing() const {
        device::ImageFolder image(path);
        device::sample::addMissingKinds(image);
    }
    TempFolder folder;
    const std::filesystem::path path = folder.path() / "image";
};

TEST_F(Sample, anEmptyImageIsEmptyAndStaysSo) {
    device::sample::createImage(path, "Empty One");
    EXPECT_EQ(device::ImageFolder(path).info().name, NSString("Empty One"));
    EXPECT_EQ(book()->contactArray().size(), 0u);
    addMissing();
    EXPECT_EQ(book()->contactArray().size(), 0u);
    EXPECT_TRUE(book()->addNewContact_toGroups(named("A"), {}));
}

TEST_F(Sample, aKindComesOnceAndWhatIsRemovedStaysAway) {
    createSample();
    const auto store = book();
    EXPECT_EQ(store->groupArray().at(0)->ContactKey.size(), 3u);
    EXPECT_TRUE(store->contactArray().at(0)->image_data()->data()->bytes().starts_with("\xFF\xD8\xFF"));
    store->deleteContactsOrGroups_callBack(store->contactArray(), {});
    addMissing();
    EXPECT_EQ(book()->contactArray().size(), 0u);
    addMissingTo({});
    EXPECT_EQ(book()->contactArray().size(), 26u);
}

TEST_F(Sample, messagesComeOnceToAnImageThatKnewNone) {
    createSample();
    const std::string before = described(chats());
    std::filesystem::remove_all(path / "HomeDomain/Library/SMS");
    std::filesystem::remove_all(path / "MediaDomain");
    addMissingTo({"Bookmarks", "Contacts"});
    EXPECT_EQ(described(chats()), before);
    execOn(path / "HomeDomain/Library/SMS/sms.db", "DELETE FROM message");
    addMissing();
    EXPECT_TRUE(chats().empty());
}

TEST_F(Sample, messagesCarryFilesThatOpen) {
    createSample();
    const Chats all = chats();
    std::map<std::string, std::string> starts;
    for (const auto &chat : all)
        for (std::size_t i = 0; i < chat->content.size(); ++i)
            if (chat->isAttachment[i])
                starts[chat->attachmentFileName[i].str()] = chat->content[i].isNil() ? "missing" : readFile(chat->content[i].str()).substr(0, 4);
    EXPECT_EQ(starts, (std::map<std::string, std::string>{{"IMG_0412.JPG", "\xFF\xD8\xFF\xE0"}, {"IMG_0412 (1).JPG", "\xFF\xD8\xFF\xE0"},
                                                           {"IMG_0412 (2).JPG", "\xFF\xD8\xFF\xE0"}, {"IMG_0413.HEIC", std::string("\0\0\0\x1C", 4)},
                                                           {"Audio Message.wav", "RIFF"}, {"Ferry_s timetable; summer.pdf", "%PDF"},
                                                           {"Eleni Papadaki.vcf", "BEGI"}, {"IMG_0420.MOV", "missing"}}));
    const auto heic = device::picture::decodedHeif(readFile(all[0]->content[4].str()));
    ASSERT_TRUE(heic);
    EXPECT_EQ(heic->width, 160);
    EXPECT_EQ(all[3]->content[2], NSString("对,五楼。"));
}

}  // namespace

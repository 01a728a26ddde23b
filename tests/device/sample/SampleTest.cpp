#include "device/sample/Sample.h"

#include <gtest/gtest.h>

#include "device/Open.h"
#include "tests/device/TestDevice.h"

using namespace testdevice;

namespace {

ContactList contactsOf(const std::filesystem::path &image) {
    const auto store = device::contacts::AddressBookStore::open(device::openDevice(image));
    store->getContactDataFromAddressList();
    EXPECT_FALSE(store->failures().first());
    return store->contactArray();
}

TEST(Sample, holdsAMixOfContacts) {
    const TempFolder folder;
    const auto path = folder.path() / "sample";
    device::sample::createSampleImage(path);
    const auto store = device::contacts::AddressBookStore::open(device::openDevice(path));
    store->getContactDataFromAddressList();
    const ContactList contacts = store->contactArray();
    ASSERT_EQ(contacts.size(), 26u);
    EXPECT_EQ(contacts[2]->completeName(), NSString("小明 王"));
    EXPECT_EQ(contacts[12]->completeName(), NSString("(Plumber) Otto"));
    EXPECT_EQ(contacts[14]->completeName(), NSString("Pizzeria Napoli"));
    EXPECT_TRUE(contacts[16]->completeName().isEmpty());
    EXPECT_TRUE(contacts[0]->notes().containsString("\n\n"));
    EXPECT_TRUE(contacts[0]->image_data()->data()->bytes().starts_with("\xFF\xD8\xFF"));
    EXPECT_EQ(contacts[1]->birthday(), NSString("1971-02-28"));
    ASSERT_EQ(store->groupArray().size(), 3u);
    EXPECT_EQ(store->groupArray()[0]->ContactKey.size(), 3u);
}

TEST(Sample, anEmptyImageIsEmptyAndStaysSo) {
    const TempFolder folder;
    device::sample::createImage(folder.path() / "empty", "Empty One");
    EXPECT_EQ(contactsOf(folder.path() / "empty").size(), 0u);
    device::ImageFolder image(folder.path() / "empty");
    EXPECT_EQ(image.info().name, NSString("Empty One"));
    device::sample::addMissingKinds(image);
    EXPECT_EQ(contactsOf(folder.path() / "empty").size(), 0u);
    EXPECT_TRUE(device::contacts::AddressBookStore::open(device::openDevice(folder.path() / "empty"))->addNewContact_toGroups(named("A"), {}));
}

TEST(Sample, aKindComesOnceAndWhatIsRemovedStaysAway) {
    const TempFolder folder;
    const auto path = folder.path() / "sample";
    device::sample::createSampleImage(path);
    const auto store = device::contacts::AddressBookStore::open(device::openDevice(path));
    store->getContactDataFromAddressList();
    store->deleteContactsOrGroups_callBack(store->contactArray(), {});
    device::ImageFolder image(path);
    device::sample::addMissingKinds(image);
    EXPECT_EQ(contactsOf(path).size(), 0u);
    device::PropertyList properties = image.properties();
    properties.setTexts("SampleKinds", {});   // as of a version without contacts
    {
        const device::WriterLock lock = image.lockForWriting();
        image.setProperties(lock, properties);
    }
    device::sample::addMissingKinds(image);
    EXPECT_EQ(contactsOf(path).size(), 26u);
}

}  // namespace

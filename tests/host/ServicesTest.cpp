#include <gtest/gtest.h>

#include "device/Open.h"
#include "device/sample/Sample.h"
#include "host/services/DeviceWatch.h"
#include "host/services/Folders.h"
#include "host/services/HostGates.h"
#include "host/services/RecordingContacts.h"
#include "host/services/SettingsFile.h"
#include "host/services/WorkspaceOpener.h"
#include "tests/host/Program.h"
#include "tests/support/TestWorld.h"
#include "tests/support/fake/Backup.h"
#include "toolkit/services/NSNotificationCenter.h"

namespace fs = std::filesystem;
using testhost::TempFolder;

namespace {

// ---------------------------------------------------------------- settings

class Settings : public testing::Test {
protected:
    TempFolder folder;
    fs::path path = folder.path() / "hnmanager/settings.json";
    std::vector<std::string> warnings;
    std::shared_ptr<UserDefaultsStore> open(const char *group = "defaults") {
        const auto file = std::make_shared<host::SettingsFile>(path, [this](const std::string &text) { warnings.push_back(text); });
        return host::SettingsFile::group(file, group);
    }
};

TEST_F(Settings, comeBackAsWhatTheyWere) {
    const auto store = open();
    store->write("flag", Value(true));
    store->write("number", Value(std::int64_t{-7}));
    store->write("text", Value(NSString("Ü\n\"")));
    store->write("gone", Value(NSString("x")));
    store->write("gone", Value());
    open("product")->write("text", Value(NSString("another group")));
    const auto again = open();
    EXPECT_TRUE(again->read("flag").isFlag());
    EXPECT_TRUE(again->read("flag").boolValue());
    EXPECT_EQ(again->read("number").integerValue(), -7);
    EXPECT_EQ(again->read("text").text(), NSString("Ü\n\""));
    EXPECT_TRUE(again->read("gone").isAbsent());
    EXPECT_TRUE(warnings.empty());
}

TEST_F(Settings, keepWhatAnotherProcessWroteMeanwhile) {
    const auto mine = open(), other = open();
    mine->write("mine", Value(true));
    other->write("other", Value(true));
    mine->write("mine", Value(false));
    EXPECT_TRUE(open()->read("other").boolValue());
}

TEST_F(Settings, thatAreDamagedAreSetAsideUnchangedAndTold) {
    for (const std::string &bytes : {std::string(), std::string("{\"defaults\": {\"fl"), std::string("[1]"), std::string("{\"defaults\": 1}"),
                                     std::string("\0\xff", 2), std::string((1 << 20) + 1, ' ')}) {
            fs::remove_all(path.parent_path());
        warnings.clear();
        writeFile(path, bytes);
        const auto store = open();
        EXPECT_TRUE(store->read("flag").isAbsent());
        store->write("flag", Value(true));
        EXPECT_TRUE(open()->read("flag").boolValue());
        EXPECT_TRUE(testhost::readFile(path.string() + ".damaged") == bytes) << bytes.substr(0, 20);
        EXPECT_EQ(warnings.size(), 1u);
    }
}

TEST_F(Settings, aValueOfAnotherKindReadsAsAbsentAndStays) {
    writeFile(path, R"({"defaults": {"list": [1]}})");
    const auto store = open();
    EXPECT_TRUE(store->read("list").isAbsent());
    store->write("flag", Value(true));
    EXPECT_NE(testhost::readFile(path).find("\"list\""), std::string::npos);
}

TEST_F(Settings, lastAsLongAsTheProcessWhereTheyCannotBeKept) {
    device::replaceWhole(folder.path() / "hnmanager", "a file stands where the folder should");
    const auto store = open();
    store->write("flag", Value(true));
    store->write("other", Value(true));
    EXPECT_TRUE(store->read("flag").boolValue());
    EXPECT_EQ(warnings.size(), 1u);
}

// ---------------------------------------------------------------- folders, workspace

TEST(UserDirectories, takeWhatIsAbsoluteOrBelowHome) {
    const auto entries = host::readUserDirectories("# a comment XDG_MUSIC_DIR=\"/no\"\n"
                                                   "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                                   "  XDG_VIDEOS_DIR=\"/media/my \\\"films\\\"\"\n"
                                                   "XDG_MUSIC_DIR=\"Music\"\n"
                                                   "XDG_PICTURES_DIR=\"$HOMEWORK/x\"\n"
                                                   "XDG_DOWNLOAD_DIR=\"$HOME\"\n"
                                                   "XDG_BROKEN_DIR=\"\nno entry",
                                                   "/home/ada");
    const std::map<std::string, std::string> expected = {
        {"XDG_DESKTOP_DIR", "/home/ada/Schreibtisch"}, {"XDG_VIDEOS_DIR", "/media/my \"films\""}, {"XDG_DOWNLOAD_DIR", "/home/ada"}};
    EXPECT_EQ(entries, expected);
}

TEST(ProcessFolder, isPrivateGoesAtTheEndAndClearsWhatADeadProcessLeft) {
    const TempFolder parent;
    fs::create_directories(parent.path() / "run-2147483646-abcdef/deep");   // no such process
    fs::create_directories(parent.path() / "run-1-abcdef");                 // a living one's
    const std::vector<const char *> otherNames{"run-x", "run-2147483646", "run-2147483646-summer trip"};
    for (const char *name : otherNames)
        fs::create_directories(parent.path() / name);
    fs::path folder;
    {
        const host::ProcessFolder process(parent.path());
        folder = process.path();
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
        device::replaceWhole(folder / "copy", "x");
    }
    EXPECT_FALSE(fs::exists(folder));
    EXPECT_FALSE(fs::exists(parent.path() / "run-2147483646-abcdef"));
    EXPECT_TRUE(fs::exists(parent.path() / "run-1-abcdef"));
    for (const char *name : otherNames)
        EXPECT_TRUE(fs::exists(parent.path() / name)) << name;
}

TEST(WorkspaceOpener, turnsPathsIntoAddressesAndOpensNoOtherSchemes) {
    EXPECT_EQ(host::WorkspaceOpener::addressOf("/tmp/a b;$(c)%/ü.html"), "file:///tmp/a%20b%3B%24%28c%29%25/%C3%BC.html");
    EXPECT_EQ(host::WorkspaceOpener::addressOf("/tmp/--help"), "file:///tmp/--help");
    host::WorkspaceOpener opener("true");
    EXPECT_TRUE(opener.openURL("https://example.com/"));
    EXPECT_FALSE(opener.openURL("javascript:alert(1)"));
    EXPECT_FALSE(opener.openURL("--version"));
    EXPECT_FALSE(opener.openFile("/no/such/file"));
    EXPECT_FALSE(host::WorkspaceOpener("no-such-program-here").openURL("https://example.com/"));
}

// ---------------------------------------------------------------- device layer

class Devices : public testing::Test {
protected:
    TempFolder folder;
    TestWorld world;
    std::shared_ptr<host::HostDeviceLayer> layer = std::make_shared<host::HostDeviceLayer>(nullptr);
    std::shared_ptr<device::Session> image(const char *name) {
        device::sample::createImage(folder.path() / name, name);
        return std::make_shared<device::Session>(device::openDevice(folder.path() / name));
    }
};

TEST_F(Devices, theLayerPostsASwitchAfterTheNewDeviceStands) {
    const auto owner = std::make_shared<int>();
    std::string seen;
    NSNotificationCenter::defaultCenter().addObserver_block(owner, NMobileDeviceDidSwitchChangeNotification,
                                                            [&](const auto &) { seen += layer->deviceName().str() + ";"; });
    EXPECT_FALSE(layer->isDeviceConnected());
    layer->switchTo(image("one"));
    const auto first = layer->context()->contactInterface();
    EXPECT_EQ(first, layer->context()->contactInterface());   // opened once
    layer->switchTo(image("two"));
    EXPECT_NE(first, layer->context()->contactInterface());
    world.settle();
    EXPECT_EQ(seen, "one;two;");
}

TEST_F(Devices, theWatchPostsOnceForEachTimeThatTheDeviceWentAway) {
    layer->switchTo(image("one"));
    int posts = 0;
    const auto owner = std::make_shared<int>();
    NSNotificationCenter::defaultCenter().addObserver_block(owner, NMobileDeviceDisConnectionDidChangeNotification,
                                                            [&](const auto &) { ++posts; });
    host::DeviceWatch watch(layer, std::chrono::hours(1));
    EXPECT_FALSE(watch.look());
    fs::rename(folder.path() / "one", folder.path() / "away");
    EXPECT_TRUE(watch.look());
    EXPECT_FALSE(watch.look());
    EXPECT_FALSE(layer->isDeviceConnected());
    fs::rename(folder.path() / "away", folder.path() / "one");
    EXPECT_FALSE(watch.look());
    EXPECT_TRUE(layer->isDeviceConnected());
    world.settle();
    EXPECT_EQ(posts, 1);
}

TEST_F(Devices, theGatesAskForRoomToTheByteAndForTheRightToWrite) {
    std::vector<device::AccessError::Kind> refusals;
    host::HostGates gates(layer, [&](device::AccessError::Kind kind, const std::string &) { refusals.push_back(kind); });
    EXPECT_FALSE(gates.actionRequestDeviceSize(0));
    const auto session = image("one");
    layer->switchTo(session);
    EXPECT_TRUE(gates.actionRequestDeviceSize(0));
    EXPECT_FALSE(gates.actionRequestDeviceSize(std::int64_t{1} << 62));
    {
        const device::WriterLock lock = session->tree()->lockForWriting();
        EXPECT_FALSE(gates.actionRequestDeviceSize(0));
    }
    using Kind = device::AccessError::Kind;
    EXPECT_EQ(refusals, (std::vector{Kind::gone, Kind::noSpace, Kind::locked}));
    EXPECT_TRUE(gates.actionRequestDiskSize_withPath(1, NSString((folder.path() / "not/there/yet").string())));
    EXPECT_FALSE(gates.actionRequestDiskSize_withPath(std::int64_t{1} << 62, NSString(folder.path().string())));
}

// Fails every second contact, and stops where it is told to.
class PatchyContacts final : public FakeAddressBook {
public:
    void addNewContacts_toGroups_progress(const ContactList &contacts, const ContactGroupList &, const AddProgress &progress) override {
        const auto total = static_cast<std::int64_t>(contacts.size());
        if (total == 0)
            progress(0, 0, -1);
        for (std::int64_t i = 0; i < total; ++i)
            if (progress(i, total, i % 2 ? -1 : 0) == 1)
                return;
    }
    std::int64_t editContacts_onGroups(const ContactList &, const ContactGroupList &) override { return 1; }
    void deleteContactsOrGroups_callBack(const ContactList &contacts, const DeleteProgress &progress) override {
        bool stop = false;
        const auto total = static_cast<std::int64_t>(contacts.size());
        for (std::int64_t i = 0; i < total && !stop; ++i)
            progress(i, total, contacts[static_cast<std::size_t>(i)], i % 2 == 0, &stop);
    }
    void exportContactsToCSVFileFromArray_toPath_callBack(const ContactList &, const NSString &, const ExportFinish &finish) override { finish(0, 2); }
    bool combineRepeatContacts_newContact_toGroup(const ContactList &, const std::shared_ptr<ZpContactDataInfo> &, const ContactGroupList &) override { return true; }
};

TEST(Recording, countsWhatEachItemBecame) {
    using Manager = CContactManagerImpl;
    const ContactList c = {make<ZpContactDataInfo>(), make<ZpContactDataInfo>(), make<ZpContactDataInfo>()};
    struct {
        const char *name;
        std::function<void(Manager &)> call;
        const char *counts;   // asked, succeeded, failed
    } rows[] = {
        {"add", [&](Manager &m) { m.addNewContacts_toGroups_progress(c, {}, {}); }, "3 2 1"},
        {"addStopped", [&](Manager &m) { m.addNewContacts_toGroups_progress(c, {}, [](auto, auto, auto) { return 1; }); }, "3 1 0"},
        {"addNothing", [&](Manager &m) { m.addNewContacts_toGroups_progress({}, {}, {}); }, "0 0 0"},
        {"addOne", [&](Manager &m) { m.addNewContact_toGroups(c[0], {}); }, "1 0 1"},
        {"edit", [&](Manager &m) { m.editContacts_onGroups(c, {}); }, "3 1 2"},
        {"remove", [&](Manager &m) { m.deleteContactsOrGroups_callBack(c, {}); }, "3 2 1"},
        {"merge", [&](Manager &m) { m.combineRepeatContacts_newContact_toGroup(c, c[0], {}); }, "1 1 0"},
        {"exportOfCardsWithoutAFile", [&](Manager &m) { m.exportContactsToVCFFile_toPath(c, "/no/such/file"); }, "3 0 3"},
        {"exportOfATable", [&](Manager &m) { m.exportContactsToCSVFileFromArray_toPath_callBack(c, "/x", {}); }, "3 2 1"}};
    for (const auto &[name, call, expected] : rows) {
        const TestWorld world;
        device::FailureLog failures;
        const auto record = std::make_shared<host::OperationRecord>();
        call(*alloc<host::RecordingContacts>(alloc<PatchyContacts>(), failures, record));
        const host::OperationCounts counts = record->counts();
        EXPECT_EQ(std::to_string(counts.asked) + " " + std::to_string(counts.succeeded) + " " + std::to_string(counts.failed), expected) << name;
    }
}

}  // namespace

#include "device/FileTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "device/BackupFolder.h"
#include "tests/device/TestDevice.h"
#include "tests/support/TestBackup.h"

using namespace testdevice;
using device::AccessError;
using device::DevicePath;

namespace {

std::string listed(const device::FileTree &tree, const DevicePath &folder) {
    std::string all;
    for (const device::FileEntry &entry : tree.list(folder))
        all += entry.name + (entry.isFolder ? "/ " : ":" + std::to_string(entry.sizeBytes) + " ");
    return all;
}

AccessError::Kind refusal(const std::function<void()> &work) {
    try {
        work();
    } catch (const AccessError &error) {
        return error.kind();
    }
    return AccessError::Kind::failed;
}

TEST(EscapingPath, isNotThereAndNeverWritten) {
    const DevicePath paths[] = {{"HomeDomain", "../secret"}, {"HomeDomain", "Library/../../../secret"}, {"HomeDomain", "/etc/passwd"}, {"..", "secret"},
                                {"", "secret"}, {".", "secret"}, {"a/../..", "secret"}, {"HomeDomain/..", "secret"}, {"HomeDomain", std::string("a\0b", 3)},
                                {"HomeDomain", "a//b"}, {"HomeDomain", "a/"}, {"Media", "up/secret"}, {"Media", "dangling"}, {"Media", "dangling/x"},
                                {"Media", "secretlink"}};
    const TestImage image;
    const auto tree = image.open();
    write(image.path().parent_path() / "secret", "s");
    write(image.path() / "secret", "s");
    std::filesystem::create_directories(image.path() / "Media");
    std::filesystem::create_symlink("../../..", image.path() / "Media/up");
    std::filesystem::create_symlink("/nowhere/at/all", image.path() / "Media/dangling");
    std::filesystem::create_symlink("../../secret", image.path() / "Media/secretlink");
    const std::string before = pictureOf(image.path().parent_path());
    for (const DevicePath &path : paths) {
        SCOPED_TRACE(path.name());
        EXPECT_FALSE(tree->find(path));
        EXPECT_EQ(listed(*tree, path), "");
        {
            const device::WriterLock lock = tree->lockForWriting();
            EXPECT_EQ(refusal([&] { tree->replace(lock, path, "x"); }), AccessError::Kind::outside);
            EXPECT_EQ(refusal([&] { tree->remove(lock, path); }), AccessError::Kind::outside);
            EXPECT_THROW((void)tree->openForWriting(lock, path), AccessError);
        }
        std::filesystem::remove(image.path() / ".lock");
        EXPECT_EQ(pictureOf(image.path().parent_path()), before);
    }
}

TEST(ImageFolder, addsUnderAFreeName) {
    const TestImage image;
    const auto tree = image.open();
    write(image.path() / "source.jpg", "bytes");
    const device::WriterLock lock = tree->lockForWriting();
    const auto add = [&](const char *name) {
        device::File source = device::File::openForReading(image.path() / "source.jpg");
        return tree->add(lock, {"Media", "DCIM"}, name, source);
    };
    EXPECT_EQ(add("a.b.jpg"), "a.b.jpg");
    EXPECT_EQ(add("a.b.jpg"), "a.b (1).jpg");
    EXPECT_EQ(add("a.b.jpg"), "a.b (2).jpg");
    EXPECT_EQ(add(".hidden"), ".hidden");
    EXPECT_EQ(add(".hidden"), ".hidden (1)");
    EXPECT_EQ(refusal([&] { (void)add("../x"); }), AccessError::Kind::outside);
    tree->replace(lock, {"Media", "DCIM/a.b.jpg"}, "longer bytes");
    tree->remove(lock, {"Media", "DCIM/.hidden"});
    tree->remove(lock, {"Media", "DCIM/never was"});
    EXPECT_EQ(listed(*tree, {"Media", "DCIM"}), ".hidden (1):5 a.b (1).jpg:5 a.b (2).jpg:5 a.b.jpg:12 ");
    EXPECT_EQ(listed(*tree, {"Media", ""}), "DCIM/ ");
    EXPECT_EQ(tree->domains(), (std::vector<std::string>{"HomeDomain", "Media"}));
    EXPECT_EQ(tree->open({"Media", "DCIM/a.b.jpg"}).read(100), "longer bytes");
}

TEST(ImageFolder, aPipeIsNoFile) {
    const TestImage image;
    std::filesystem::remove(image.database());
    ASSERT_EQ(mkfifo(image.database().c_str(), 0600), 0);
    EXPECT_EQ(names(image.contacts()), "");
    EXPECT_THROW((void)device::File::openForReading(image.database()), AccessError);
}

TEST(ImageFolder, aNewOneStandsWholeOrNotAtAll) {
    const TempFolder folder;
    const auto path = folder.path() / "new";
    EXPECT_THROW(device::ImageFolder::create(path, {}, [](device::ImageFolder &) { throw std::runtime_error("no room"); }), std::runtime_error);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    std::filesystem::create_directories(path);
    device::ImageFolder::create(path, {});   // an empty folder is welcome
    EXPECT_TRUE(std::filesystem::exists(path / "Device.plist"));
    EXPECT_EQ(refusal([&] { device::ImageFolder::create(path, {}); }), AccessError::Kind::failed);
}

TEST(BackupFolder, findsAndListsWhatIsThere) {
    const TestBackup backup;
    backup.add("MediaDomain", "Media", "", 2);
    backup.add("MediaDomain", "Media/a.txt", "abc");
    backup.add("MediaDomain", "Media/sub", "", 2);
    backup.add("MediaDomain", "Media/sub/b.txt", "b");
    backup.add("MediaDomain", "Media/../../x", "evil");
    backup.add("OtherDomain", "Media/c.txt", "c");
    backup.add("MediaDomain", "Media/lost", "x");
    const auto place = [&](const char *path) {
        const std::string id = device::BackupFolder::fileID({"MediaDomain", path});
        return backup.path() / id.substr(0, 2) / id;
    };
    std::filesystem::remove(place("Media/lost"));
    backup.add("MediaDomain", "Media/link", "x");
    std::filesystem::remove(place("Media/link"));
    std::filesystem::create_symlink("/etc/passwd", place("Media/link"));
    const std::string before = pictureOf(backup.path());
    const device::BackupFolder tree(backup.path());
    EXPECT_EQ(listed(tree, {"MediaDomain", "Media"}), "a.txt:3 sub/ ");
    EXPECT_EQ(listed(tree, {"MediaDomain", ""}), "Media/ ");
    EXPECT_EQ(tree.open({"MediaDomain", "Media/sub/b.txt"}).read(9), "b");
    for (const char *path : {"Media/lost", "Media/link", "Media/../../x", "Media", "Media/nothing"})
        EXPECT_FALSE(tree.find({"MediaDomain", path})) << path;
    EXPECT_EQ(tree.domains(), (std::vector<std::string>{"MediaDomain", "OtherDomain"}));
    EXPECT_EQ(refusal([&] { (void)tree.lockForWriting(); }), AccessError::Kind::readOnly);
    EXPECT_EQ(pictureOf(backup.path()), before);
}

}  // namespace

#include "device/backup/BackupTask.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>

#include "device/BackupFolder.h"
#include "device/Open.h"
#include "device/backup/BackupPassword.h"
#include "tests/device/messages/TestMessages.h"
#include "tests/support/TestBackup.h"
#include "tests/support/TestWorld.h"

using namespace device;
using namespace device::backup;
using namespace testdevice;
using namespace std::chrono_literals;

namespace {

namespace fs = std::filesystem;

std::string twoChats() { return readFile(HN_SAMPLES_DIR "/messages/twoChats.sql"); }

// Says every callback as a word; what a test hangs in runs after it, on the layer's thread.
class Listener : public RKBackupAndRestoreTaskDelegate {
public:
    std::vector<double> progress;
    std::string said;
    fs::path path;
    Chats chats;
    std::function<void()> atProgress, atOver;

    void backupProgress(double percent) override {
        progress.push_back(percent);
        if (atProgress)
            atProgress();
    }
    void backupOverWithcSeccussFlag_path_backupRes(std::uint32_t, NSString where, std::uint32_t code) override {
        said += (where.isNil() ? "none " : "path ") + std::to_string(code) + "\n";
        path = where.str();
        if (atOver)
            atOver();
    }
    void parseOneOver_type_progress(std::shared_ptr<NSObject> object, std::uint32_t type, float share) override {
        chats.push_back(std::dynamic_pointer_cast<MessageBackupChat>(object));
        said += "chat " + std::to_string(type) + " " + std::to_string(share).substr(0, 4) + "\n";
    }
    void parseAllOver() override { said += "all over\n"; }
};

class BackupTaskTest : public testing::Test {
protected:
    BackupTaskTest() {
        image.addAttachment("ab/pic's; x.jpg", std::string(3'000'000, 'p'));
        write(image.path() / "HomeDomain/Library/AddressBook/AddressBook.sqlitedb", "people");
        write(image.path() / "HomeDomain/Library/Safari/Bookmarks.db", "other data");
        tree = image.open();
        task->setManagerDelegate(listener);
    }

    std::shared_ptr<BackupTask> newTask() {
        return alloc<BackupTask>(BackupTask::Environment{[this] { return tree; }, [this](const Failure &failure) { reasons += failure.text + "\n"; },
                                                         [this] { return now += step; }});
    }
    void start(std::uint32_t flag = 8) { task->startBackup_flag_isIncrement(NSString(target().string()), flag, 0); }
    void backUp(std::uint32_t flag = 8) {
        start(flag);
        world.settle();
    }
    [[nodiscard]] fs::path target() const { return image.folder() / "scratch" / "Backup"; }
    [[nodiscard]] std::vector<std::string> made() const {
        std::vector<std::string> names;
        std::error_code error;
        for (const auto &entry : fs::directory_iterator(target(), error))
            names.push_back(entry.path().filename());
        return names;
    }
    void parse(const fs::path &path) {
        auto file = make<BackupFileInfo>();
        file->path = NSString(path.string());
        task->startParseBackupFile(file);
    }
    void readIn(const fs::path &path) {
        parse(path);
        world.settle();
    }

    TestWorld world;
    TestMessages image{twoChats()};
    std::shared_ptr<FileTree> tree;
    std::string reasons;
    std::chrono::steady_clock::time_point now;
    std::chrono::milliseconds step = 1ms;   // each look at the clock takes it on
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
    std::shared_ptr<BackupTask> task = newTask();
};

TEST_F(BackupTaskTest, aBackupIsTheTwinOfTheImage) {
    write(image.path() / "Device.plist", [this] {
        PropertyList properties = PropertyList::read(image.path() / "Device.plist");
        properties.setText("DeviceName", "Zoë's \"Phone\"");
        properties.setText("UniqueDeviceID", "../0001 ABC");
        return properties.bytes();
    }());
    tree = image.open();
    const std::string before = pictureOf(image.path());
    EXPECT_FALSE(task->isBackuping());
    EXPECT_EQ(task->localSpaceToBackup(8), static_cast<std::int64_t>(fs::file_size(image.database())) + 3'000'000 + 6);   // of what is copied
    listener->atProgress = [this] { EXPECT_TRUE(task->isBackuping() && !dispatch::isMain()); };
    backUp();
    EXPECT_FALSE(task->isBackuping());
    EXPECT_EQ(listener->said, "path 0\n");
    EXPECT_EQ(listener->path, target() / "device.._0001_ABC");
    EXPECT_EQ(made(), std::vector<std::string>{"device.._0001_ABC"});
    EXPECT_EQ(pictureOf(image.path()), before);

    const auto backup = std::make_shared<BackupFolder>(listener->path);
    EXPECT_EQ(backup->info().name, NSString("Zoë's \"Phone\""));
    EXPECT_EQ(backup->info().iOSVersion, NSString("17.2"));
    EXPECT_EQ(backup->domains(), (std::vector<std::string>{"HomeDomain", "MediaDomain"}));
    EXPECT_EQ(readFile(*backup->find({"HomeDomain", "Library/AddressBook/AddressBook.sqlitedb"})), "people");
    EXPECT_FALSE(backup->find({"HomeDomain", "Library/Safari/Bookmarks.db"}));
    EXPECT_EQ(backup->list({"MediaDomain", "Library/SMS/Attachments"}).at(0).name, "ab");
    EXPECT_TRUE(fs::exists(listener->path / "3d/3d0d7e5fb2ce288813306e4d4636395e047a3d28"));   // of every device
    messages::MessageStore fromImage(tree, "/x"), fromBackup(backup, "/x");
    Chats copied = chatsOf(fromBackup);
    ASSERT_EQ(copied.size(), 2u);
    EXPECT_EQ(readFile(listener->path / copied[0]->content[0].str().substr(3)), std::string(3'000'000, 'p'));
    copied[0]->content[0] = NSString("/x/MediaDomain/Library/SMS/Attachments/ab/pic's; x.jpg");
    EXPECT_EQ(described(copied), described(chatsOf(fromImage)));
    EXPECT_EQ(reasons, "");
}

TEST_F(BackupTaskTest, theListsOfABackupAreThoseOfADevice) {
    backUp();
    sqlite::Database manifest(listener->path / "Manifest.db", sqlite::Access::readOnly);
    const auto text = [&](const char *sql) {
        sqlite::Statement row = manifest.prepare(sql);
        return row.step() ? std::string(row.bytes(0)) : "";
    };
    EXPECT_EQ(text("SELECT group_concat(sql, ';') FROM sqlite_master WHERE type = 'table'"),
              "CREATE TABLE Files (fileID TEXT PRIMARY KEY, domain TEXT, relativePath TEXT, flags INTEGER, file BLOB);"
              "CREATE TABLE Properties (key TEXT PRIMARY KEY, value BLOB)");
    EXPECT_EQ(text("SELECT fileID || flags FROM Files WHERE relativePath = 'Library/SMS/sms.db'"), "3d0d7e5fb2ce288813306e4d4636395e047a3d281");
    EXPECT_EQ(text("SELECT group_concat(relativePath) FROM (SELECT * FROM Files WHERE flags = 2 AND domain = 'MediaDomain' ORDER BY relativePath)"),
              "Library,Library/SMS,Library/SMS/Attachments,Library/SMS/Attachments/ab");
    const PropertyList file = PropertyList::parse(text("SELECT file FROM Files WHERE relativePath LIKE '%pic%'"), "file");
    EXPECT_EQ(file.text("$archiver"), "NSKeyedArchiver");
    EXPECT_EQ(file.integer("$version"), 100000);
    EXPECT_EQ(file.texts("$objects"), (std::vector<std::string>{"$null", "Library/SMS/Attachments/ab/pic's; x.jpg"}));
    const PropertyList description = PropertyList::read(listener->path / "Manifest.plist"), info = PropertyList::read(listener->path / "Info.plist");
    EXPECT_EQ(description.flag("IsEncrypted"), false);
    EXPECT_EQ(description.text("Version"), "10.0");
    EXPECT_EQ(description.dictionary("Lockdown")->text("UniqueDeviceID"), "0001-ABCD");
    EXPECT_EQ(info.text("Target Identifier"), "0001-abcd");
    EXPECT_EQ(info.text("Unique Identifier"), "0001-ABCD");
    EXPECT_EQ(PropertyList::read(listener->path / "Status.plist").text("SnapshotState"), "finished");
}

TEST_F(BackupTaskTest, progressRisesFromZeroToAHundredOften) {
    backUp();
    ASSERT_GE(listener->progress.size(), 2u);
    EXPECT_TRUE(std::ranges::is_sorted(listener->progress));
    EXPECT_EQ(listener->progress.front(), 0);
    EXPECT_EQ(listener->progress.back(), 100);
    EXPECT_LT(now.time_since_epoch(), 100ms * (listener->progress.size() - 1));   // of the writer's own clock
}

TEST_F(BackupTaskTest, theSpeedLimitDividesThePaceByTenAndEndsAtOnce) {
    task->enterSpeedLimitBackup();   // no backup runs: nothing
    listener->atProgress = [this] { task->enterSpeedLimitBackup(); };
    backUp();
    const auto slow = world.elapsed();
    const std::size_t calls = listener->progress.size();
    EXPECT_GT(slow, 12 * 9 * 1ms);   // a dozen pieces, a millisecond or more for each
    EXPECT_LT(slow / calls, 100ms);
    listener->atProgress = [this] { task->exitSpeedLimitBackup(); };
    const auto again = world.elapsed();
    start();
    task->enterSpeedLimitBackup();
    world.settle();
    EXPECT_LT(world.elapsed() - again, slow / 4);
    EXPECT_EQ(listener->said, "path 0\npath 0\n");
}

TEST_F(BackupTaskTest, aStopEndsItWithoutAPathAndLeavesNothing) {
    listener->atProgress = [this] { task->stopBackup(); };
    backUp();
    EXPECT_EQ(listener->said, "none 111\n");
    EXPECT_TRUE(made().empty());
    listener->atProgress = nullptr;
    task->stopBackup();   // nothing runs: the next one is not stopped
    backUp();
    EXPECT_EQ(listener->said, "none 111\npath 0\n");
    EXPECT_EQ(reasons, "");
}

TEST_F(BackupTaskTest, aStopBeforeTheFirstStepCounts) {
    bool isFirst = true;
    listener->atOver = [this, &isFirst] {
        if (!std::exchange(isFirst, false))
            return;
        start();   // begins once this callback is over
        EXPECT_TRUE(task->isBackuping());
        task->stopBackup();
    };
    backUp();
    EXPECT_EQ(listener->said, "path 0\nnone 111\n");
}

TEST_F(BackupTaskTest, aLostDeviceEndsItAsAStopDoes) {
    step = 40ms;
    listener->atProgress = [this] {
        if (fs::exists(image.path()) && listener->progress.size() == 2)
            fs::rename(image.path(), image.folder() / "gone");
    };
    backUp();
    EXPECT_EQ(listener->said, "none 111\n");
    EXPECT_TRUE(made().empty());
    tree = nullptr;
    backUp();
    EXPECT_EQ(listener->said, "none 111\nnone 111\n");
}

TEST_F(BackupTaskTest, aSecondStartSupersedesTheFirstWhichEndsInSilence) {
    bool isFirst = true;
    listener->atProgress = [&] {
        if (!std::exchange(isFirst, false))
            return;
        fs::remove_all(target());   // as a new load does
        start();
    };
    backUp();
    EXPECT_EQ(listener->said, "path 0\n");
    EXPECT_EQ(made(), std::vector<std::string>{"0001-ABCD"});
    EXPECT_NO_THROW(BackupFolder{listener->path});
}

TEST_F(BackupTaskTest, aFolderRemovedBelowItWaitsForTheNextStart) {
    step = 40ms;
    bool isFirst = true;
    listener->atProgress = [&] {
        if (listener->progress.size() > 3 && std::exchange(isFirst, false)) {
            fs::remove_all(target());
            dispatch::after(300ms, dispatch::main(), [this] { start(); });
        }
    };
    backUp();
    EXPECT_FALSE(isFirst);
    EXPECT_EQ(listener->said, "path 0\n");
    EXPECT_EQ(reasons, "");
}

TEST_F(BackupTaskTest, aFileThatCannotBeReadGivesCodeOneAndTheReason) {
    const fs::path unreadable = image.path() / "MediaDomain/Library/SMS/Attachments/ab/pic's; x.jpg";
    fs::remove(unreadable);
    write(unreadable, "x");
    fs::permissions(unreadable, fs::perms::none);
    if (std::ifstream(unreadable))
        GTEST_SKIP() << "this user reads everything";
    backUp();
    EXPECT_EQ(listener->said, "none 1\n");
    EXPECT_TRUE(reasons.find("pic's") != std::string::npos) << reasons;
}

TEST_F(BackupTaskTest, whatCannotBeWrittenGivesCodeOneAndLeavesNothing) {
    write(target(), "a file in the way");
    backUp();
    EXPECT_EQ(listener->said, "none 1\n");
    EXPECT_NE(reasons, "");
    EXPECT_EQ(readFile(target()), "a file in the way");
    backUp(4);
    EXPECT_EQ(listener->said, "none 1\nnone 1\n");
}

TEST_F(BackupTaskTest, aFullDiskGivesCodeOneAndLeavesNothing) {
    const int status = inChild([this] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1'000'000, 1'000'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        try {
            BackupWriter writer(*tree, {[] { return true; }, [](double) {}, [] { return false; }});
            return writer.write(target()) ? 1 : 2;
        } catch (const AccessError &error) {
            return std::string(error.what()).find(target().string()) != std::string::npos && made().empty() ? 0 : 3;
        }
    });
    EXPECT_EQ(status, 0);
}

TEST_F(BackupTaskTest, killedInTheMiddleItLeavesNoFolderThatLooksWhole) {
    const int status = inChild([this]() -> int {
        int steps = 0;
        BackupWriter writer(*tree, {[&] { return ++steps < 12 || raise(SIGKILL) != 0; }, [](double) {}, [] { return false; }});
        (void)writer.write(target());
        return 0;
    });
    EXPECT_EQ(status, 128 + SIGKILL);
    EXPECT_FALSE(fs::exists(target() / "0001-ABCD"));
    backUp();
    EXPECT_NO_THROW(BackupFolder{target() / "0001-ABCD"});
}

TEST_F(BackupTaskTest, linksLeadNeitherOutNorRound) {
    const fs::path attachments = image.path() / "MediaDomain/Library/SMS/Attachments";
    fs::create_directory_symlink(image.path() / "MediaDomain/Library/SMS", attachments / "round");
    fs::create_symlink("/etc/hostname", attachments / "out");
    fs::create_directory_symlink("/etc", attachments / "away");
    backUp();
    EXPECT_EQ(listener->said, "path 0\n");
    sqlite::Database manifest(listener->path / "Manifest.db", sqlite::Access::readOnly);
    EXPECT_EQ(manifest.integer("SELECT count(*) FROM Files WHERE relativePath LIKE '%/out' OR relativePath LIKE '%/away%' OR relativePath LIKE '%round/%'"), 0);
}

TEST_F(BackupTaskTest, aLogBesideTheDatabaseGoesAlong) {
    const fs::path away = image.folder() / "live.db";
    {
        sqlite::Database live(away, sqlite::Access::create);
        live.exec("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0; PRAGMA synchronous = OFF");
        live.exec(messageVersions().back().sql + twoChats() + "UPDATE message SET text = 'from the log' WHERE ROWID = 2");
        fs::copy_file(away, image.database(), fs::copy_options::overwrite_existing);
        fs::copy_file(away.string() + "-wal", image.database().string() + "-wal");
    }
    const std::string before = pictureOf(image.path());
    backUp();
    readIn(listener->path);
    ASSERT_EQ(listener->chats.size(), 2u);
    EXPECT_EQ(listener->chats[1]->content[0], NSString("from the log"));
    EXPECT_EQ(pictureOf(image.path()), before);
}

TEST_F(BackupTaskTest, aBackupFolderIsItsOwnBackupAndStaysAsItIs) {
    const TestBackup backup(image.folder() / "it's a backup");
    backup.add("HomeDomain", "Library/SMS/sms.db", readFile(image.database()));
    backup.add("MediaDomain", "Library/SMS/Attachments/ab/pic's; x.jpg", "jpeg");
    const std::string before = pictureOf(backup.path());
    tree = openDevice(backup.path());
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 0u);
    EXPECT_EQ(task->localSpaceToBackup(8), 0);
    backUp();
    EXPECT_EQ(listener->said, "path 0\n");
    EXPECT_EQ(listener->progress, std::vector<double>{100});
    EXPECT_EQ(listener->path.string().find('\''), std::string::npos);
    EXPECT_EQ(fs::canonical(listener->path), fs::canonical(backup.path()));
    EXPECT_FALSE(fs::exists(target()));
    readIn(listener->path);
    ASSERT_EQ(listener->chats.size(), 2u);
    const std::string picture = listener->chats[0]->content[0].str();
    EXPECT_TRUE(picture.starts_with(listener->path.string() + "/"));
    EXPECT_EQ(readFile(picture), "jpeg");
    EXPECT_EQ(pictureOf(backup.path()), before);
    EXPECT_EQ(task->setDeviceBackupPassword("secret"), 1);
    task = nullptr;
    EXPECT_FALSE(fs::exists(fs::symlink_status(listener->path)));
}

TEST_F(BackupTaskTest, aBackupFolderOfAPlainPathIsReportedByThatPath) {
    const TestBackup backup(image.folder() / "plain one");
    tree = openDevice(backup.path());
    backUp();
    EXPECT_EQ(listener->path, fs::canonical(backup.path()));
}

TEST_F(BackupTaskTest, aParseOfNothingTellsTheReasonAndIsOver) {
    parse(image.folder() / "nowhere");
    task->startParseBackupFile(nullptr);
    world.settle();
    EXPECT_EQ(listener->said, "all over\nall over\n");
    EXPECT_NE(reasons.find("nowhere"), std::string::npos);
}

TEST_F(BackupTaskTest, aBackupThatLacksFilesIsParsedAsFarAsItGoes) {
    const TestBackup backup(image.folder() / "poor");
    backup.add("HomeDomain", "Library/SMS/sms.db", readFile(image.database()));
    backup.add("MediaDomain", "Library/SMS/Attachments/ab/pic's; x.jpg", "jpeg");
    fs::remove(*BackupFolder(backup.path()).find({"MediaDomain", "Library/SMS/Attachments/ab/pic's; x.jpg"}));
    readIn(backup.path());
    ASSERT_EQ(listener->chats.size(), 2u);
    EXPECT_TRUE(listener->chats[0]->content[0].isNil());
    EXPECT_EQ(listener->chats[0]->attachmentFileName[0], NSString("pic_s; x.jpg"));
    EXPECT_EQ(reasons, "");

    fs::remove(backup.path() / "3d/3d0d7e5fb2ce288813306e4d4636395e047a3d28");
    readIn(backup.path());
    write(backup.path() / "3d/3d0d7e5fb2ce288813306e4d4636395e047a3d28", readFile(image.database()).substr(0, 5000));
    readIn(backup.path());
    EXPECT_NE(reasons, "");
    EXPECT_EQ(listener->chats.size(), 2u);
    write(backup.path() / "Manifest.db", "no database");
    const std::string before = pictureOf(backup.path());
    readIn(backup.path());
    EXPECT_TRUE(listener->said.ends_with("all over\nall over\n")) << listener->said;
    EXPECT_NE(reasons.find("Manifest.db"), std::string::npos) << reasons;
    EXPECT_EQ(pictureOf(backup.path()), before);
}

TEST_F(BackupTaskTest, clearingEndsTheParseBefore) {
    listener->atOver = [this] {
        parse(image.path());
        task->clearData();
        parse(image.path());
    };
    backUp();
    EXPECT_EQ(listener->said, "path 0\nall over\nchat 2 0.50\nchat 2 1.00\nall over\n");
}

TEST_F(BackupTaskTest, aDelegateThatHasGoneHearsNothing) {
    std::weak_ptr<Listener> gone = listener;
    start();
    parse(image.path());
    listener = nullptr;
    world.settle();
    EXPECT_TRUE(gone.expired());
    EXPECT_FALSE(task->isBackuping());
}

TEST_F(BackupTaskTest, aParseInTheCallbackOfABackupComesAfterIt) {
    listener->atOver = [this] {
        EXPECT_FALSE(task->isBackuping());
        parse(listener->path);
        EXPECT_EQ(listener->said, "path 0\n");
    };
    backUp();
    EXPECT_EQ(listener->said, "path 0\nchat 2 0.50\nchat 2 1.00\nall over\n");
}

TEST_F(BackupTaskTest, thePasswordIsKeptSealedAndTakenOffByTheRightOneAlone) {
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 0u);
    EXPECT_EQ(task->removeDeviceBackupPassword("secret"), 1);
    EXPECT_EQ(task->setDeviceBackupPassword(""), 1);
    EXPECT_EQ(task->setDeviceBackupPassword("pässword"), 0);
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 1u);
    EXPECT_EQ(readFile(image.path() / "Device.plist").find("pässword"), std::string::npos);
    EXPECT_EQ(task->setDeviceBackupPassword("another"), 1);
    backUp();
    EXPECT_EQ(listener->said, "none 1\n");
    for (const char *wrong : {"", "password", "pässword "})
        EXPECT_EQ(task->removeDeviceBackupPassword(wrong), 1) << wrong;
    {
        const WriterLock busy = tree->lockForWriting();
        EXPECT_EQ(task->removeDeviceBackupPassword("pässword"), 1);
    }
    EXPECT_EQ(task->removeDeviceBackupPassword("pässword"), 0);
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 0u);
    EXPECT_FALSE(PropertyList::read(image.path() / "Device.plist").has("BackupPassword"));
}

TEST_F(BackupTaskTest, theEncryptionOfADeviceThatCannotBeAskedIsUnknown) {
    write(image.path() / "Device.plist", "damaged");
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 2u);
    tree = nullptr;
    EXPECT_EQ(task->isDeviceBackupEncrypted(), 2u);
}

TEST(BackupPassword, bytesThatNobodySealedOpenWithNothing) {
    const std::string sealed = sealedPassword("a");
    EXPECT_TRUE(isPassword("a", sealed));
    EXPECT_NE(sealed, sealedPassword("a"));
    EXPECT_FALSE(isPassword("a", sealed.substr(1)));
    EXPECT_FALSE(isPassword("", ""));
}

}  // namespace

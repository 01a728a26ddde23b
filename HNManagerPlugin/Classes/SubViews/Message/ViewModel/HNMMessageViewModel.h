// The threads of the device's messages, and the way to them: a device backup of the messages alone into a folder of the
// user's, its parse, the threads.
//
// Load      startSyncBackUp (room on the disk, the password of an encrypted backup; modal), then reloadData, which returns
//           at once. The load ends with one `backupFinished`, on the main thread after threads were built, else on a thread
//           of the device layer. A backup of an earlier load that is still running is superseded and ends without one.
// Lists     `contents` by the last message's time, newest first; `globalArray` in the order of the parse.
// Filter    phoneNumberModels has, under each of the user's own numbers and under "All", an NSMutableArray of threads.
// Backup    stays on disk: pictures on show and exports are read from it.
// Threads   main, unless told otherwise. Threads are built on the global queue while the manager's loadingFinished is false.
#pragma once

#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/Message/MessageTableView/HNMessageDetailViewController.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMessageEntity.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/MessageTexts.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CContactManagerImpl.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RKBackupAndRestoreTask.h"
#include "toolkit/Property.h"

class HNMMessageViewModel : public HNMbaseViewModel, public RKBackupAndRestoreTaskDelegate {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr std::int64_t kRoomForBackup = 1'048'576'000;   // bytes
    static constexpr const char *kAllNumbers = "All";   // of phoneNumberModels

    Shared<std::shared_ptr<CContactManagerImpl>> contactM;   // taken on first use
    std::shared_ptr<NSMutableArray> messageBR;   // of MessageBackupChat: parsed and not yet built
    // Told on a thread of the layer.
    Shared<std::function<void(double percent)>> backupProgress_;
    Shared<std::function<void()>> backupFinished;
    Shared<NSString> backupPassword;   // taken off the device; absent or empty when none was. Put back by every parse.
    Shared<std::shared_ptr<RKBackupAndRestoreTask>> parseTask;   // made on first use, for parsing alone
    Shared<std::vector<NSString>> phoneNumbers;   // the user's own, in the order in which they were first seen
    std::shared_ptr<NSMutableDictionary> phoneNumberModels;
    Property<NSString> messageOwner;   // of the conversation on show
    Property<std::shared_ptr<NSImage>> selectMessageIcon;
    std::shared_ptr<HNMessageDetailViewController> messageTableController;   // the conversation pane

    void init() override;

    // ------------------------------------------------------------ the load
    // Asks for room and, where backups are encrypted, for the password. False: no backup can be made.
    [[nodiscard]] bool startSyncBackUp();
    // Empties `contents`, removes the last backup and starts another.
    void reloadData() override;
    // Bytes.
    [[nodiscard]] std::int64_t predictBackupFileSize();
    // Any thread, blocks. A query that fails three times counts as not encrypted.
    [[nodiscard]] bool isDeviceBackupEncrypted();
    // `complete` comes on the main queue, true where the password was right. Returns at once.
    void removeDeviceBackupPassword_complete(const NSString &password, std::function<void(bool)> complete);
    // Any thread.
    void praseMessageBackupFile(const NSString &path);
    // Empties all that a load fills but `contents`.
    void forgetThreads();
    // Not 0 while the messages are kept in the cloud.
    [[nodiscard]] std::int64_t checkMessageFindeMyPhoneicloud();
    // Where backups are made.
    [[nodiscard]] static NSString backupFolder();

    void backupProgress(double percent) override;
    void backupOverWithcSeccussFlag_path_backupRes(std::uint32_t flag, NSString path, std::uint32_t result) override;
    void parseOneOver_type_progress(std::shared_ptr<NSObject> object, std::uint32_t type, float progress) override;
    void parseAllOver() override;

    // ------------------------------------------------------------ the list
    void sortHNMessageEntityArray();
    // Shows thread `contents[row]` in the conversation; a thread without rows leaves the earlier one.
    void loadMessageAtRow(std::int64_t row);
    // By title. False leaves the list as it is; the empty text brings it back in the order of the parse.
    bool searchFileByString(const NSString &text) override;
    void searchSelectedChanged() override { rememberSelection(); }
    // One of the user's own numbers, or the text of "All_PhoneNumber"; an unknown number shows nothing, an empty one does
    // nothing.
    void setFilterPhoneNumber(const NSString &number);

    // ------------------------------------------------------------ export, see HNMMessageViewModel+Export.cpp
    using StopFlag = std::shared_ptr<Shared<bool>>;
    // On the main queue, after a row; `index` counts threads from 1. Setting `stop` ends the export at the next row.
    using TableProgress = std::function<void(std::int64_t index, std::int64_t total, const StopFlag &stop)>;
    // The same; the last call has 0, 0 and `finished`.
    using PageProgress = std::function<void(std::int64_t index, std::int64_t total, const StopFlag &stop, bool finished)>;
    using Threads = std::vector<std::shared_ptr<HNMessageEntity>>;
    // Room for the attachments of all threads on show; the host tells the person otherwise.
    [[nodiscard]] bool couldExportMessageAttachment();
    // Both run on the caller's thread until all is written. Rows of one thread that come faster than the main queue takes
    // them share a call. The table stands behind what the file holds already, as UTF-8; a stopped one writes nothing.
    void exportSelectedMessages_exportMessages_callBack(const NSString &path, const Threads &threads, const TableProgress &callBack);
    // `path` ends in "/Messages.html"; the page's files are put beside it. A stopped page ends with what it has.
    void exportHtml_exportMessages_Htmltitle_callBack(const NSString &path, const Threads &threads, const NSString &title,
                                                      const PageProgress &callBack);
    // 1 picture, 2 sound, 3 video, 0 neither, by the row's type word; puts the mark of media files into the folder for 2, 3.
    [[nodiscard]] static std::int64_t medioType_path(const NSString &type, const NSString &folder);

    // ------------------------------------------------------------ texts, see MessageTexts.h
    [[nodiscard]] static NSString filterNSNull(const NSString &text) { return messageTexts::filterNSNull(text); }
    [[nodiscard]] static NSString deleteEnterChar(const NSString &text) { return messageTexts::deleteEnterChar(text); }
    [[nodiscard]] static NSString stringFromDate(dispatch::Time date) { return messageTexts::stringFromDate(date); }
    [[nodiscard]] static bool isString_containString(const NSString &text, std::string_view part) {
        return messageTexts::isString_containString(text, part);
    }

    // Picture and caption of a row, by its type word.
    static void messageAttachmentIcon_messageObj(const NSString &type, HNDetailMessage &row);

protected:
    [[nodiscard]] NSString identifierOfRow(const id &row) const override;

private:
    std::shared_ptr<CContactManagerImpl> contacts();
    static void showNoSpaceDialog();
    [[nodiscard]] bool askForPassword();
    void restorePassword();
    void finish();
    void buildThreads(std::uint64_t load);
    bool addThread(const std::shared_ptr<HNMessageEntity> &thread, std::uint64_t load);
    void addToNumbers(const std::shared_ptr<HNMessageEntity> &thread);
    void showThreads(std::uint64_t load);
    void resetDataContents();

    std::unordered_set<NSString> knownNumbers_;   // those of phoneNumbers; changed under the lock of load_
    Shared<std::uint64_t> load_;   // counts the loads: what an earlier one still builds is dropped
};

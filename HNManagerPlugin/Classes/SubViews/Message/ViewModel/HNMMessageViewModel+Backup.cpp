// The way to the threads: room, password, backup, parse, threads.
#include <unordered_set>

#include "HNManagerPlugin/Classes/SubViews/Message/BackupPasswordWindow/HNFMBackupDecryptionController.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNMMessageViewModel.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/ThreadBuilder.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/RStrategyActionEventRouter.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/services/NSBundle.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSApplication.h"

namespace {

std::shared_ptr<RKBackupAndRestoreTask> sharedTask() { return RKBackupAndRestoreTask::sharedInstance(); }

}   // namespace

// ---------------------------------------------------------------- before the backup

NSString HNMMessageViewModel::backupFolder() {
    return NSString::stringWithFormat("%@/Pelorix/Message/Backup", userFolders().applicationSupport);
}

std::int64_t HNMMessageViewModel::predictBackupFileSize() { return sharedTask()->localSpaceToBackup(RKBackupAndRestoreTask::kMessages); }

bool HNMMessageViewModel::startSyncBackUp() {
    if (!RStrategyActionEventRouter::shareInstance().actionRequestDiskSize_withPath(kRoomForBackup, backupFolder())) {
        showNoSpaceDialog();
        finish();
        return false;
    }
    return !isDeviceBackupEncrypted() || askForPassword();
}

void HNMMessageViewModel::showNoSpaceDialog() {
    const auto dialog = RUIDialogWindowController::dialog("", localized("MessageView_NoSpaceBackup"),
                                                          NSBundle::bundleForClass()->imageForResource_ofType("icon_exclamation", "png"),
                                                          "", localized("FileManager_OK"), RUIDialogWindowController::kOneButton);
    NSApp()->runModalForWindow(dialog->window());
}

bool HNMMessageViewModel::isDeviceBackupEncrypted() {
    constexpr int kTries = 3;
    constexpr std::uint32_t kQueryFailed = 2;   // and above
    for (int i = 0; i < kTries; ++i)
        if (const std::uint32_t answer = sharedTask()->isDeviceBackupEncrypted(); answer < kQueryFailed)
            return answer == 1;
    RVLog("获取设备备份加密错误");
    return false;
}

bool HNMMessageViewModel::askForPassword() {
    const auto dialog = make<HNFMBackupDecryptionController>(NSString("HNFMBackupDecryptionController"));
    const auto result = std::make_shared<Shared<bool>>(true);
    dialog->setOkButtonClickBlock([self = weakOf(this), weak = std::weak_ptr(dialog), result] {
        const auto window = weak.lock();
        if (!window)
            return;
        window->setDecryptState_flag(HNFMBackupDecryptionController::kChecking, true);
        tell(self, [&](HNMMessageViewModel &model) {
            model.removeDeviceBackupPassword_complete(window->getPassword(), [weak, result](bool isRight) {
                const auto shown = weak.lock();
                if (!shown)
                    return;   // closed meanwhile: a run that goes on now is somebody else's
                *result = isRight;
                if (!isRight)
                    return shown->setDecryptState_flag(HNFMBackupDecryptionController::kEntryAgain, false);
                shown->close();
                NSApp()->stopModalWithCode(0);
            });
        });
    });
    return NSApp()->runModalForWindow(dialog->window()) == 0 && *result;
}

void HNMMessageViewModel::removeDeviceBackupPassword_complete(const NSString &password, std::function<void(bool)> complete) {
    dispatch::async(dispatch::global(), [self = weakOf(this), password, complete = std::move(complete)] {
        const bool isRight = sharedTask()->removeDeviceBackupPassword(password) == 0;
        if (isRight)
            tell(self, [&](HNMMessageViewModel &model) { model.backupPassword = password; });
        if (complete)
            dispatch::async(dispatch::main(), [complete, isRight] { complete(isRight); });
    });
}

// ---------------------------------------------------------------- backup

void HNMMessageViewModel::reloadData() {
    load_.update([&](std::uint64_t &load) {
        ++load;
        messageBR->removeAllObjects();
        contents->removeAllObjects();
    });
    (void)contacts();
    const NSString folder = backupFolder();
    if (NSFileManager::fileExistsAtPath(folder))
        NSFileManager::removeItemAtPath(folder);
    const auto task = sharedTask();
    task->setManagerDelegate(weakOf(this));
    task->startBackup_flag_isIncrement(folder, RKBackupAndRestoreTask::kMessages, 0);
}

void HNMMessageViewModel::forgetThreads() {
    load_.update([&](std::uint64_t &load) {
        ++load;
        globalArray->removeAllObjects();
        phoneNumberModels->removeAllObjects();
        phoneNumbers = std::vector<NSString>();
        knownNumbers_.clear();
    });
}

void HNMMessageViewModel::backupProgress(double percent) {
    if (const auto block = backupProgress_.get())
        block(percent);
}

void HNMMessageViewModel::backupOverWithcSeccussFlag_path_backupRes(std::uint32_t, NSString path, std::uint32_t result) {
    if (result == RKBackupAndRestoreTask::kStopped) {
        finish();
        sharedTask()->setManagerDelegate({});
    } else if (!path) {
        finish();
    } else {
        praseMessageBackupFile(path);
    }
}

void HNMMessageViewModel::finish() {
    if (const auto block = backupFinished.get())
        block();
}

// ---------------------------------------------------------------- parse

void HNMMessageViewModel::praseMessageBackupFile(const NSString &path) {
    const auto file = make<BackupFileInfo>();
    file->path = path;
    const auto task = parseTask.update([](std::shared_ptr<RKBackupAndRestoreTask> &held) {
        if (!held)
            held = RKBackupAndRestoreTask::newTask();
    });
    task->clearData();
    task->setManagerDelegate(weakOf(this));
    task->startParseBackupFile(file);
}

void HNMMessageViewModel::parseOneOver_type_progress(std::shared_ptr<NSObject> object, std::uint32_t type, float) {
    if (type == RKBackupAndRestoreTask::kChat && !sharedTask()->isBackuping() && object)
        messageBR->addObject(std::move(object));
}

void HNMMessageViewModel::parseAllOver() {
    const auto task = sharedTask();
    if (task->isBackuping())
        return;
    task->setManagerDelegate({});
    restorePassword();
    if (const auto service = contacts()) {
        service->freeAddressBookInfo();
        service->getContactDataFromAddressList();
    }
    dispatch::async(dispatch::global(), [self = selfOf(this), load = load_.get()]() mutable {
        dispatch::guarded("threads", [&] { self->buildThreads(load); });   // one that fails all the same ends the load
        dispatch::async(dispatch::main(), [self = std::move(self), load] { self->showThreads(load); });
    });
}

void HNMMessageViewModel::restorePassword() {
    const NSString password = backupPassword;
    if (!password.isEmpty() && sharedTask()->setDeviceBackupPassword(password) != 0)
        RVLog(NSString::stringWithFormat("%s,恢复备份密码失败！", "-[HNMMessageViewModel parseAllOver]"));
}

// ---------------------------------------------------------------- threads

void HNMMessageViewModel::buildThreads(std::uint64_t load) {
    std::vector<id> chats = messageBR->snapshot().items();
    messageBR->removeAllObjects();
    const auto service = contacts();
    ThreadBuilder builder(service ? service->contactArray() : ContactList());
    for (id &parsed : chats) {
        const auto chat = std::dynamic_pointer_cast<MessageBackupChat>(std::exchange(parsed, nullptr));
        if (chat && !addThread(builder.threadOf(*chat), load))
            return;
    }
    sortHNMessageEntityArray();
}

// False where a later load has begun: its lists are not this one's.
bool HNMMessageViewModel::addThread(const std::shared_ptr<HNMessageEntity> &thread, std::uint64_t load) {
    return load_.update([&](std::uint64_t &current) {
        if (current != load)
            return;
        contents->addObject(thread);
        globalArray->addObject(thread);
        addToNumbers(thread);
    }) == load;
}

void HNMMessageViewModel::addToNumbers(const std::shared_ptr<HNMessageEntity> &thread) {
    const auto addUnder = [&](const NSString &key) {
        auto threads = phoneNumberModels->at<NSMutableArray>(key);
        if (!threads)
            phoneNumberModels->setObject_forKey(threads = make<NSMutableArray>(), key);
        threads->addObject(thread);
    };
    std::unordered_set<NSString> seen;
    for (const NSString &number : thread->callerID) {
        if (!number || !seen.insert(number).second)
            continue;
        addUnder(number);
        if (knownNumbers_.insert(number).second)
            phoneNumbers.update([&](std::vector<NSString> &numbers) { numbers.push_back(number); });
    }
    addUnder(kAllNumbers);
}

void HNMMessageViewModel::showThreads(std::uint64_t load) {
    if (load_.get() != load)
        return;
    tell(arrayController, [](NSArrayController &controller) { controller.rearrangeObjects(); });
    finish();
}

// The export of the selected threads, in both shapes.
#include "HNManagerPlugin/Classes/PublicProgressWindow/CountedFlow.h"
#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "HNManagerPlugin/Classes/SubViews/Message/ViewManager/HNMMessageViewManager.h"
#include "HNManagerPlugin/contracts/RVCoreHelper/RVProductWebLogHelper.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVMFileManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVProductConfig.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/services/SystemCommand.h"
#include "toolkit/services/UserFolders.h"
#include "toolkit/views/NSApplication.h"

namespace {

constexpr const char *kFolderKey = "MessageExportPathKey";
constexpr std::int64_t kOpenFolderTag = 10;

using Threads = HNMMessageViewModel::Threads;
using StopFlag = HNMMessageViewModel::StopFlag;

Threads threadsOf(const NSArray &objects) {
    Threads threads;
    for (const id &object : objects)
        if (auto thread = std::dynamic_pointer_cast<HNMessageEntity>(object))
            threads.push_back(std::move(thread));
    return threads;
}

// Once per call of an export; true while the cancel stands.
void passCancelOn(CountedRun &run, const StopFlag &stop) {
    if (run.cancel != -1)
        return;
    run.end();
    *stop = true;
}

void showProgress(const CountedRun &run, std::int64_t index, std::int64_t total) {
    run.window()->mainLabel()->setStringValue(NSString::stringWithFormat(localized("MessageView_Exporting"), index, total));
    run.window()->progressIndicator()->setDoubleValue(static_cast<float>(index) / static_cast<float>(total) * 100.0F);
}

void exportTable(HNMMessageViewModel &model, const NSString &path, const Threads &threads, const CountedRun::Ref &run) {
    model.exportSelectedMessages_exportMessages_callBack(
        path, threads, [run](std::int64_t index, std::int64_t total, const StopFlag &stop) {
            passCancelOn(*run, stop);
            showProgress(*run, index, total);
            if (index == total)
                run->end();
        });
}

void exportPage(HNMMessageViewModel &model, const NSString &path, const Threads &threads, const CountedRun::Ref &run) {
    model.exportHtml_exportMessages_Htmltitle_callBack(
        path, threads, MobileDeviceManager::defaultManager().deviceName(),
        [run](std::int64_t index, std::int64_t total, const StopFlag &stop, bool finished) {
            passCancelOn(*run, stop);
            if (finished)
                return run->end();
            showProgress(*run, index, total);
        });
}

void recodeTable(const NSString &path) {
    if (NSFileManager::fileExistsAtPath(path))
        HNMMessageViewManager::changeMessageFileCodeToGB(path);
}

void closeWindow(const CountedRun::Ref &run) {
    run->window()->close();
    NSApp()->stopModal();
}

}   // namespace

// What the two shapes differ in.
struct HNMMessageViewManager::ExportKind {
    const char *panelType;
    // What is written, below the path that was chosen; and what the folder button opens.
    const char *fileBelow;
    void (*write)(HNMMessageViewModel &, const NSString &path, const Threads &, const CountedRun::Ref &);
    void (*convert)(const NSString &path);   // null for none
    bool closesWithFolder;
};

void HNMMessageViewManager::exportMessage(const id &) {
    JOIN_POINT(HNMMessageViewManager, "exportMessage:");
    exportAs({"xls", "", exportTable, recodeTable, false});
}

void HNMMessageViewManager::exportMessage2HTML(const id &) { exportAs({"", "/Messages.html", exportPage, nullptr, true}); }

void HNMMessageViewManager::exportAs(const ExportKind &kind) {
    const auto model = messageViewModel.lock();
    if (!model || !model->couldExportMessageAttachment())
        return;
    const NSString target = chooseExportTarget(kind);
    if (target.isEmpty() || !dialogs::isWritableTarget(target.stringByDeletingLastPathComponent()))
        return;
    RVProductConfig::setValue_forKey(target.stringByDeletingLastPathComponent(), kFolderKey);
    runExport(kind, target);
}

// A table's path stays as it was chosen, with whatever extension.
NSString HNMMessageViewManager::chooseExportTarget(const ExportKind &kind) const {
    const NSString last = RVProductConfig::valueForKey(kFolderKey);
    const NSString folder = last.isEmpty() ? NSString::stringWithFormat("%@/Documents", NSHomeDirectory()) : last;
    return RVMFileManager::savePanelWithDirectory_defaultName_andFileType(
        folder, NSString::stringWithFormat("Messages_%@", getCurrentTimes()), kind.panelType);
}

void HNMMessageViewManager::runExport(const ExportKind &kind, const NSString &target) {
    const auto model = messageViewModel.lock();
    const auto rows = model->arrayController.lock();
    const Threads threads = rows ? threadsOf(rows->selectedObjects()) : Threads();
    if (threads.empty())
        return;
    const NSString path = target.stringByAppendingString(kind.fileBelow);
    const NSString opened = kind.closesWithFolder ? target : target.stringByDeletingLastPathComponent();
    const auto count = static_cast<std::int64_t>(threads.size());

    CountedPlan plan;
    plan.windowTitle = localized("MessageView_ExportTitle");
    plan.waitText = localized("MessageView_ExportWaiting");
    plan.start = [=](const CountedRun::Ref &run) { kind.write(*model, path, threads, run); };
    if (kind.convert)
        plan.beforeResult = [=] { kind.convert(path); };
    // The count decides alone: nothing here asks how the files fared.
    plan.resultText = [count](std::int64_t, std::int64_t) {
        return count < 2 ? localized("MessageView_exportSuccess")
                         : NSString::stringWithFormat(localized("MessageView_exportSuccess(s)"), count);
    };
    plan.didFinish = [closes = kind.closesWithFolder, opened](const CountedRun::Ref &run) {
        const auto window = run->window();
        window->colorButton()->setTag(kOpenFolderTag);
        window->colorButton()->setTitle(localized("BackupRestore_ExportOpenFolder"));
        window->colorButton()->setHidden(false);
        if (window->isClosed())
            return;
        window->setButtonDidClickBlock([run, closes, opened](const std::shared_ptr<NSButton> &button) {
            const bool opens = button->tag() == kOpenFolderTag;
            if (closes || !opens)
                closeWindow(run);
            if (opens)
                NSWorkspace::sharedWorkspace().openFile(opened);
        });
    };
    CountedFlow::run(std::move(plan));
}

void HNMMessageViewManager::changeMessageFileCodeToGB(const NSString &path) {
    const NSString scratch = NSString::stringWithFormat("%@/pelorix_message.xls", path.stringByDeletingLastPathComponent());
    const NSString place =
        NSString::stringWithFormat("%@/%@", scratch.stringByDeletingLastPathComponent(), path.lastPathComponent());
    SystemCommand::run(NSString::stringWithFormat("iconv -f UTF8 -t GB18030 %@ > %@", path, scratch));
    SystemCommand::run(NSString::stringWithFormat("rm %@", path));
    SystemCommand::run(NSString::stringWithFormat("mv %@ %@", scratch, place));
}

#include "HNManagerPlugin/Classes/PublicProgressWindow/DeviceFilePreview.h"

#include <algorithm>

#include "HNManagerPlugin/Classes/PublicProgressWindow/ResultText.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CFileManagerImpl.h"
#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVFoundation/RVLoger.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "toolkit/Property.h"
#include "toolkit/services/NSFileManager.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/services/UserFolders.h"

namespace {

using Window = std::shared_ptr<RUIProgressWindowController>;
using Status = std::shared_ptr<Shared<std::int32_t>>;

bool leavesItsFolder(const NSString &name) {
    return std::ranges::any_of(name.componentsSeparatedByString("/"), [](const NSString &part) { return part == NSString(".."); });
}

void setUp(const Window &window, const Status &status, const NSString &title) {
    window->loadingIndicator()->removeFromSuperview();
    window->setWindowWillCloseBlock([status] {
        *status = -1;
        return true;
    });
    window->setButtonDidClickBlock([status, link = std::weak_ptr(window)](const std::shared_ptr<NSButton> &button) {
        tell(link, [&](RUIProgressWindowController &shown) {
            if (button != shown.borderButton())
                return;
            shown.close();
            *status = -1;
        });
    });
    window->colorButton()->setHidden(true);
    window->borderButton()->setTitle(localized("FileManager_Cancel"));
    window->window()->setTitle(title);
}

void showProgress(RUIProgressWindowController &window, const TransferProgress &progress, std::int64_t total, bool finished) {
    window.mainLabel()->setStringValue(NSString::stringWithFormat(localized("FileManager_Loading"), progress.fileName.lastPathComponent()));
    window.subLabel()->setStringValue(sizesText(progress.currentSize, total));
    window.progressIndicator()->setDoubleValue(percentOf(progress.currentSize, total));
    window.loadingIndicator()->startAnimation();
    if (finished)
        window.close();
}

void fetch(const Window &window, const Status &status, const DeviceFilePreview::Place &place, const NSString &name,
           const NSString &devicePath) {
    const std::shared_ptr<CFileManagerImpl> files = CContextFactory::shareInstance().defaultManager()->fileInterface();
    std::vector<NSString> written;
    if (files)
        files->exportDevcieFile_toDirectory_getExportFile_progress(
            {DeviceFileInfo::deviceFileInfoWithPath_FileName(devicePath, name)}, place.directory, &written,
            [window, status, fixedTotal = place.totalBytes](const TransferProgress &progress, bool finished) -> std::int32_t {
                dispatch::async(dispatch::main(), [window, progress, finished, total = fixedTotal.value_or(progress.totalSize)] {
                    showProgress(*window, progress, total, finished);
                });
                return *status;
            });
    else
        window->close();
    NSWorkspace::sharedWorkspace().openMedia(written.empty() ? NSString() : written.front());
}

}  // namespace

void DeviceFilePreview::open(const NSString &name, const NSString &devicePath, std::int64_t, const NSString &title) {
    openIn({NSString::stringWithFormat("%@/TmpMusic", NSTemporaryDirectory()), false, {}}, name, devicePath, title);
}

void DeviceFilePreview::openIn(const Place &place, const NSString &name, const NSString &devicePath, const NSString &title) {
    if (leavesItsFolder(name)) {
        RVLog(NSString::stringWithFormat("refused to preview %@", name));
        return;
    }
    const NSString local = NSString::stringWithFormat("%@/%@", place.directory, name);
    if (!place.fetchesAnew && NSFileManager::fileExistsAtPath(local)) {
        NSWorkspace::sharedWorkspace().openMedia(local);
        return;
    }
    NSFileManager::createDirectoryAtPath(place.directory);
    RUIProgressWindowController::showWindow([&](const Window &window) {
        const Status status = std::make_shared<Shared<std::int32_t>>(0);
        setUp(window, status, title);
        dispatch::async(dispatch::global(), [=] { fetch(window, status, place, name, devicePath); });
    });
}

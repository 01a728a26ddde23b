#include "HNManagerPlugin/Classes/PublicProgressWindow/ConflictStep.h"

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/MobileDeviceManager.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

std::optional<std::int64_t> ConflictStep::choiceFor(const NSString &itemTitle) {
    if (appliesToAll())
        return choice_;
    const auto question = HNXExistFileSettingController::standardExistFileSettingWindow_Title_isRepeat(
        NSString::stringWithFormat(localized("Music_Name_Existe"), itemTitle), windowTitle_, &appliesToAll_);
    choice_ = NSApp()->runModalForWindow(question->window());
    if (!MobileDeviceManager::defaultManager().isDeviceConnected())
        return {};
    return choice_;
}

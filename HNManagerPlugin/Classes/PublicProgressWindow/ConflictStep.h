// The conflict step of an import: asks once per item that the device holds already, unless the answer holds for all.
//
//     ConflictStep conflicts(localized("Import_Videos"));
//     const auto choice = conflicts.choiceFor(entity->videoTitle);   // no value: the device has gone, the batch ends
//
// With the box ticked and the window closed without a choice, kNoChoice holds for all that follow. Threads: main.
#pragma once

#include <optional>

#include "HNManagerPlugin/Classes/PublicProgressWindow/HNXExistFileSettingController.h"

class ConflictStep {
public:
    explicit ConflictStep(NSString windowTitle, std::int64_t firstChoice = HNXExistFileSettingController::kNoChoice)
        : windowTitle_(std::move(windowTitle)), choice_(firstChoice) {}
    // A code of HNXExistFileSettingController.
    [[nodiscard]] std::optional<std::int64_t> choiceFor(const NSString &itemTitle);
    [[nodiscard]] bool appliesToAll() const { return appliesToAll_ != 0; }
    // The code in force.
    [[nodiscard]] std::int64_t choice() const { return choice_; }

private:
    NSString windowTitle_;
    std::int64_t choice_;
    std::int8_t appliesToAll_ = 0;
};

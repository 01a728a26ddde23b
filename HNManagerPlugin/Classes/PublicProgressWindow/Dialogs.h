// The small questions and messages that the flows of all categories share. Texts come ready, not as keys.
// Threads: main, unless told.
#pragma once

#include <cstdint>
#include <memory>

#include "HNManagerPlugin/contracts/RVUIKit/RUIDialogWindowController.h"

namespace dialogs {

// A png of the plug-in; null where there is none.
[[nodiscard]] std::shared_ptr<NSImage> icon(const NSString &name);

// Runs a dialog modally and gives its code (see RUIDialogWindowController).
std::int64_t run(const NSString &title, const NSString &message, const NSString &iconName, const NSString &leftTitle,
                 const NSString &rightTitle, std::int64_t windowType);

// One button, "OK".
void tellWithExclamation(const NSString &title, const NSString &message);

// The plain question before a deletion: Cancel at the left, Delete at the right. True on Delete alone.
[[nodiscard]] bool confirmDelete(const NSString &title, const NSString &message);

struct CompleteDelete {
    bool confirmed = false;
    bool fromDeviceToo = false;   // the check box; false without a confirmation
};
// The question with the check box; the remembered box is written back to false afterwards.
[[nodiscard]] CompleteDelete confirmCompleteDelete(const NSString &message, const NSString &title);

// The question before a running transfer is stopped, made and run apart, so that somebody may close it early (a no).
// Running it gives true on yes.
[[nodiscard]] std::shared_ptr<RUIDialogWindowController> cancelQuestion();
[[nodiscard]] bool runCancelQuestion(const std::shared_ptr<RUIDialogWindowController> &question);
// The same as a session that looks after the device: it closes by itself, as a no, when the device goes away.
[[nodiscard]] bool runCancelQuestionWhileConnected(const std::shared_ptr<RUIDialogWindowController> &question, bool logsPasses);

// True where the path can be written; otherwise says so.
[[nodiscard]] bool isWritableTarget(const NSString &path);

// True where the computer has room for that many bytes; otherwise writes `logLine` and says so under `title`.
[[nodiscard]] bool hasRoomOnComputer(std::int64_t bytes, const NSString &title, const NSString &logLine);

// Reads the device's free space anew. Any thread; blocks.
[[nodiscard]] bool hasRoomOnDevice(std::int64_t bytes);
void tellNoRoomOnDevice();

}  // namespace dialogs

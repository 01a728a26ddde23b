// The progress window and the result dialogs of one view manager. The manager holds one and hands it out; its operations
// keep their given names, a manager may forward them one to one.
//
//     host.showProgressWindow(host.progressWindowString_upText_downText(title, up, down));   // blocks, main thread
//     tell(host.pDelegate, [&](auto &sink) { sink.setProgressDialogInfo_...(up, down, percent); });
//     host.closeProgressWindow();
//
// A worker shows the window with dispatch::performOnMainThread(..., false), polls pProressWindow->isClosed and reports
// through pDelegate on the main queue. Threads: main.
#pragma once

#include <memory>

#include "HNManagerPlugin/Classes/PublicProgressWindow/HNMPublicProgressWindow.h"
#include "toolkit/lists/NSMutableDictionary.h"

class ProgressWindowHost {
public:
    std::weak_ptr<HNMProgressDelegate> pDelegate;
    std::shared_ptr<HNMPublicProgressWindow> pProressWindow;

    // Both make a dictionary with "title", "upText" and "downText".
    [[nodiscard]] std::shared_ptr<NSMutableDictionary> progressWindowString_upText_downText(const NSString &title, const NSString &up,
                                                                                             const NSString &down) const;
    [[nodiscard]] std::shared_ptr<NSMutableDictionary> progressWindowArrtibuteString_upText_downText(
        const NSString &title, const std::shared_ptr<NSAttributedString> &up, const std::shared_ptr<NSAttributedString> &down) const;
    // Returns when the modal run has ended. The window is used again until closeProgressWindow.
    void showProgressWindow(const std::shared_ptr<NSMutableDictionary> &contents);
    void closeProgressWindow();
    // A result dialog from "iconName" (png of the plug-in), "Title", "Contents", "leftButtonTitle", "rightButtonTitle"; gives
    // the modal result, whose meaning is that of RUIDialogWindowController's type.
    std::int64_t openOperationResultWindowContents_type(const std::shared_ptr<NSMutableDictionary> &contents, std::int64_t type) const;
};

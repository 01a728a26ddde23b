// A modal progress window with two lines, a bar and a cancel button. A worker polls `isClosed` as its stop signal.
// Made from the nib of its name. Threads: main; isClosed and isStart may be read on any thread.
#pragma once

#include "HNManagerPlugin/Classes/PublicProgressWindow/HNMProgressDelegate.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUISimpleProgressView.h"
#include "toolkit/Property.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class HNMPublicProgressWindow : public NSWindowController, public HNMProgressDelegate {
public:
    HN_DECLARE_CLASS_TABLE

    Shared<bool> isClosed;              // the window has closed: stop
    Shared<bool> isStart;               // false until the first report
    bool hiddenWndCloseBtn = false;     // set before the window loads: its close button is disabled
    Property<bool> isHiddenBtn;         // hides the cancel button
    std::weak_ptr<NSTextField> upTextField, downTextField;
    std::weak_ptr<RUISimpleProgressView> progress;
    Property<NSString> strCancelBtnTitle;

    void windowDidLoad() override;
    void setProgressDialogInfo_DownTextField_progressValue(const std::shared_ptr<NSAttributedString> &up,
                                                           const std::shared_ptr<NSAttributedString> &down, double value) override;
    void WindowCloseNotify(const id &notification);
    void cancelButtonClicked(const id &sender);
    // One step of a bar of unknown length: it creeps up to 95 and waits for the end.
    void updataProgress();
    void dealloc() override;
};

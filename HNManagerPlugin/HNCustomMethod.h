// Nine result dialogs, each from a count of successes and a count of failures; they differ in texts, buttons and window.
//
// Long form    the text is built: "3 photos exported" from count, SucceededStr and MessageSuccedded, the failures likewise on
//              a second line. Short form: the texts come finished.
// Nothing succeeded (also where nothing failed either) is the failed case.
// All run modally and give the window's code (RUIDialogWindowController, HNPhototDiolagWindowController). Threads: main.
#pragma once

#include "toolkit/NSObject.h"

class HNCustomMethod : public NSObject {
public:
    HN_DECLARE_CLASS_TABLE

    // ------------------------------------------------------------ long form
    static std::int64_t showDialogSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr,
        const NSString &messageSuccedded, const NSString &messageFailed, const NSString &title);
    static std::int64_t showDialogHaveDoubleButtonSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr,
        const NSString &messageSuccedded, const NSString &messageFailed, const NSString &title);
    static std::int64_t showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr,
        const NSString &messageSuccedded, const NSString &messageFailed, const NSString &title);
    static std::int64_t
    showDialogHaveDoubleButtonWithLinkURLSucceededCount_FailedCount_SucceededStr_FailedStr_MessageSuccedded_MessageFailed_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr,
        const NSString &messageSuccedded, const NSString &messageFailed, const NSString &title);

    // ------------------------------------------------------------ short form
    static std::int64_t New_showDialogSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr, const NSString &title);
    static std::int64_t New_showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr, const NSString &title);
    static std::int64_t New_showDialogHaveDoubleButtonSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr, const NSString &title);
    static std::int64_t New_showDialogHaveDoubleButtonWithLinkURLSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr, const NSString &title);
    static std::int64_t delete_showDialogWithLinkSucceededCount_FailedCount_SucceededStr_FailedStr_Title(
        std::int64_t succeeded, std::int64_t failed, const NSString &succeededStr, const NSString &failedStr, const NSString &title);
};

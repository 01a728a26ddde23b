#include "host/cli/CliPresenter.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIBreadcrumbWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"

namespace host::cli {

namespace {

constexpr std::int64_t kNotReadyTag = 0;   // the flow has not set up its button yet
constexpr std::int64_t kDoneTag = 15;
constexpr auto kUntilReady = std::chrono::milliseconds(5);
constexpr int kMostTimes = 4;   // one window is answered; a choice that was refused counts too

// What a button stands for is told by the key of its title: places and numbers differ from dialog to dialog.
constexpr std::array kTellingKeys = {"MessageDialog_Ok", "FileManager_OK", "OK"};
constexpr std::array kOpeningKeys = {"BackupRestore_ExportOpenFolder", "FileManager_OpenFolder"};
constexpr std::array kGoingOnKeys = {"ContactView_button_Delete", "ContactView_button_Merge", "FileManager_Delete"};
constexpr std::array kCancelKeys = {"ContactView_button_Cancel", "FileManager_Cancel"};
constexpr std::array kSaveKeys = {"FileManager_Save"};
constexpr const char *kCancelPrompt = "ExportPhotoToPC_Want_To_Cancel";

template <class Keys> bool hasTitle(const NSButton &button, const Keys &keys) {
    return std::ranges::any_of(keys, [&](const char *key) { return button.title() == localized(NSString(key)); });
}

std::vector<std::shared_ptr<NSButton>> pushButtons(NSWindow &window) {
    std::vector<std::shared_ptr<NSButton>> buttons;
    if (!window.contentView())
        return buttons;
    window.contentView()->walk([&](NSView &view) {
        const auto button = std::dynamic_pointer_cast<NSButton>(view.shared_from_this());
        const bool isPushed = button && button->buttonType() == NSButtonType::momentaryPushIn && !button->title().isEmpty();
        if (isPushed && button->isEnabled() && !button->isHiddenOrHasHiddenAncestor())
            buttons.push_back(button);
        return true;
    });
    return buttons;
}

template <class Keys> std::shared_ptr<NSButton> find(const std::vector<std::shared_ptr<NSButton>> &buttons, const Keys &keys) {
    const auto found = std::ranges::find_if(buttons, [&](const auto &button) { return hasTitle(*button, keys); });
    return found == buttons.end() ? nullptr : *found;
}

// The texts on show, in the order of the views.
NSString messageOf(NSWindow &window) {
    std::string message;
    if (!window.contentView())
        return {};
    window.contentView()->walk([&](NSView &view) {
        const auto *field = dynamic_cast<NSTextField *>(&view);
        if (!field || field->isEditable() || field->isHiddenOrHasHiddenAncestor() || field->stringValue().isEmpty())
            return true;
        message += (message.empty() ? "" : "\n") + field->stringValue().str();
        return true;
    });
    return NSString(message);
}

// A small message that its flow takes away itself: nobody answers it.
bool isOnlyTold(const NSWindow &window) {
    return std::dynamic_pointer_cast<RUIBreadcrumbWindowController>(window.windowController()) != nullptr;
}

std::shared_ptr<NSTextField> passwordFieldOf(const NSWindow &window) {
    const auto content = window.contentView();
    return content ? std::dynamic_pointer_cast<NSTextField>(content->viewWithIdentifier("passwordTextField")) : nullptr;
}

std::shared_ptr<RUIProgressWindowController> progressOf(const NSWindow &window) {
    return std::dynamic_pointer_cast<RUIProgressWindowController>(window.windowController());
}

// Does it only where the window still is the one in front by then.
dispatch::Block whileInFront(const std::shared_ptr<NSWindow> &window, std::function<void()> action) {
    return [weak = std::weak_ptr(window), action = std::move(action)] {
        if (const auto open = weak.lock(); open && NSApp()->modalWindow() == open)
            action();
    };
}

}  // namespace

// ---------------------------------------------------------------- the loop's side

bool CliPresenter::act() {
    const auto window = NSApp()->modalWindow();
    if (!window || isStuckOn(window) || isOnlyTold(*window))
        return false;
    if (auto *panel = dynamic_cast<NSSavePanel *>(window.get()))
        return answerPanel(*panel);
    if (const auto progress = progressOf(*window))
        return answerProgress(*progress);
    if (const auto field = passwordFieldOf(*window))
        return answerPassword(*window, *field);
    if (filledIn_.lock() == window)
        return answerFilledIn(*window);
    return answerInput(*window) || answerDialog(*window);
}

bool CliPresenter::over() {
    const auto window = NSApp()->modalWindow();
    if (!window || isOnlyTold(*window))
        return false;
    refused_ = true;
    console_.message("a window that cannot be answered here was closed: " + window->title().str());
    window->performClose();
    if (NSApp()->isModal(*window))
        NSApp()->abortModal();
    return true;
}

bool CliPresenter::interrupt() {
    isInterrupted_ = true;
    const auto window = NSApp()->modalWindow();
    if (!window)
        return false;
    const auto progress = progressOf(*window);
    if (!progress) {
        if (auto *panel = dynamic_cast<NSSavePanel *>(window.get()))
            panel->cancel();
        else
            window->performClose();
        return true;
    }
    cancel(window, *progress);
    return true;
}

void CliPresenter::cancel(const std::shared_ptr<NSWindow> &window, const RUIProgressWindowController &progress) {
    const auto button = progress.borderButton();
    if (!button || button->isHidden())
        window->performClose();
    else if (button->tag() == kNotReadyTag)
        dispatch::after(kUntilReady, dispatch::main(), whileInFront(window, [this, window = std::weak_ptr(window)] {
                            if (const auto open = window.lock())
                                cancel(open, *progressOf(*open));
                        }));
    else if (button->isEnabled() && button->tag() != kDoneTag)
        button->performClick();
    // a disabled button: kept until the batch ends
}

void CliPresenter::windowDidOpen(NSWindow &window, bool modal) {
    if (!modal || !isInterrupted_)
        return;
    // Ctrl-C while the flow still prepared its work: the window is cancelled as soon as it stands. The question that the
    // cancel button opens is answered while the work goes on; all else waits for its pause.
    const auto open = std::static_pointer_cast<NSWindow>(window.shared_from_this());
    dispatch::async(dispatch::main(), whileInFront(open, [this, isProgress = progressOf(window) != nullptr] {
                        isProgress ? void(interrupt()) : void(act());
                    }));
}

// A window on which answers have no effect must not keep the loop busy for ever.
bool CliPresenter::isStuckOn(const std::shared_ptr<NSWindow> &window) {
    if (lastActedOn_.lock() != window) {
        lastActedOn_ = window;
        timesActed_ = 0;
    }
    return timesActed_ >= kMostTimes;
}

// ---------------------------------------------------------------- answers

bool CliPresenter::answerPanel(NSSavePanel &panel) {
    ++timesActed_;
    const bool opens = dynamic_cast<NSOpenPanel *>(&panel) != nullptr;
    if (opens ? openPaths_.empty() : savePath_.isNil()) {
        panel.cancel();
        return true;
    }
    std::vector<NSString> paths{std::exchange(savePath_, opens ? savePath_ : NSString())};
    if (opens) {
        paths = std::move(openPaths_.front());
        openPaths_.pop_front();
    }
    if (!panel.choose(paths, !opens && replaces_)) {
        refused_ = true;
        const std::string reason = panel.refusal().str(), path = paths.front().str();
        console_.message(reason.starts_with(path) ? reason : path + ": " + reason);
        panel.cancel();
    }
    return true;
}

bool CliPresenter::answerInput(NSWindow &window) {
    if (!window.contentView())
        return false;
    bool isAskedFor = false;
    for (const auto &[identifier, text] : inputs_)
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(window.contentView()->viewWithIdentifier(identifier))) {
            field->typeText(text);
            isAskedFor = true;
        }
    if (!isAskedFor)
        return false;
    inputs_.clear();
    filledIn_ = std::static_pointer_cast<NSWindow>(window.shared_from_this());
    return true;
}

bool CliPresenter::answerPassword(NSWindow &window, NSTextField &field) {
    const auto close = [&](const char *reason) {
        passwordRefused_ = true;
        console_.message(reason);
        window.performClose();
        return true;
    };
    if (passwordGiven_.lock().get() == &window) {
        const auto wrong = window.contentView()->viewWithIdentifier("wrongMessageLabel");
        return wrong && !wrong->isHidden() ? close("the password of the device's backups is wrong") : false;
    }
    const char *variable = std::getenv("HNMANAGER_BACKUP_PASSWORD");
    const auto password = console_.canAsk()       ? console_.askSecret("Password of the device's backups: ")
                          : variable && *variable ? std::optional<std::string>(variable)
                                                  : std::nullopt;
    const auto okay = std::dynamic_pointer_cast<NSButton>(window.contentView()->viewWithIdentifier("okButton"));
    if (!password || password->empty() || !okay)
        return close("the device's backups have a password: it is asked for on a terminal, else taken from HNMANAGER_BACKUP_PASSWORD");
    passwordGiven_ = std::static_pointer_cast<NSWindow>(window.shared_from_this());
    field.typeText(NSString(*password));
    okay->performClick();
    return true;
}

// A turn later: a window may need one to see that it can be saved.
bool CliPresenter::answerFilledIn(NSWindow &window) {
    ++timesActed_;
    filledIn_.reset();
    const Buttons buttons = pushButtons(window);
    const auto save = find(buttons, kSaveKeys), cancel = find(buttons, kCancelKeys);
    refused_ |= !save;
    if (const auto &button = save && !isInterrupted_ ? save : cancel)
        button->performClick();
    else
        window.performClose();
    return true;
}

bool CliPresenter::answerProgress(RUIProgressWindowController &progress) {
    const auto button = progress.borderButton();
    if (!button || !button->isEnabled() || button->isHidden() || button->tag() != kDoneTag)
        return false;
    ++timesActed_;
    endText_ = progress.mainText();
    if (endText_.isNil())
        endText_ = NSString("");
    console_.clearProgress();
    button->performClick();
    return true;
}

bool CliPresenter::answerDialog(NSWindow &window) {
    const Buttons buttons = pushButtons(window);
    if (buttons.empty())
        return false;   // it waits for no person
    ++timesActed_;
    const NSString message = messageOf(window);
    if (message.containsString(localized(NSString(kCancelPrompt)).view())) {
        const char *key = isInterrupted_ ? "FileManager_OK" : "FileManager_Cancel";
        const auto answer = find(buttons, std::array{key});
        answer ? answer->performClick() : window.performClose();
        return true;
    }
    const auto told = find(buttons, kTellingKeys);
    const bool onlyTells = std::ranges::all_of(
        buttons, [&](const auto &button) { return button == told || hasTitle(*button, kOpeningKeys); });
    if (onlyTells || buttons.size() == 1) {
        if (told || !find(buttons, kCancelKeys)) {   // one that can only be cancelled has nothing to tell: what it asks for is missing
            lastDialogText_ = message;
            console_.message(message.str());
        }
        (told ? told : buttons.front())->performClick();
        return true;
    }
    return answerQuestion(window, buttons, message);
}

bool CliPresenter::answerQuestion(NSWindow &window, const Buttons &buttons, const NSString &message) {
    const auto goOn = find(buttons, kGoingOnKeys), cancel = find(buttons, kCancelKeys);
    if (!goOn)
        return false;
    if (declines_) {
        cancel ? cancel->performClick() : window.performClose();
        return true;
    }
    if (!isInterrupted_ && goesOn(message)) {
        goOn->performClick();
        return true;
    }
    refused_ = true;
    cancel ? cancel->performClick() : window.performClose();
    return true;
}

bool CliPresenter::goesOn(const NSString &message) {
    if (yes_)
        return true;
    if (!console_.canAsk()) {
        console_.message(message.str() + " (refused: without a terminal this needs --yes)");
        return false;
    }
    const auto answer = console_.ask(message.str() + " [y/N] ");
    return answer && (*answer == "y" || *answer == "Y" || *answer == "yes");
}

}  // namespace host::cli

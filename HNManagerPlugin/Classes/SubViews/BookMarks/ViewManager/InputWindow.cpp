#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewManager/InputWindow.h"

#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "toolkit/views/NSApplication.h"

namespace inputWindow {

void setButtonTitles(const std::weak_ptr<RUIButton> &save, const std::weak_ptr<RUIButton> &cancel) {
    tell(save, [](RUIButton &button) { button.setTitle(localized("FileManager_Save")); });
    tell(cancel, [](RUIButton &button) { button.setTitle(localized("FileManager_Cancel")); });
}

void showHint(const std::weak_ptr<NSTextField> &field, const char *key) {
    if (systemVersion() >= SystemVersion{10, 10})
        tell(field, [key](NSTextField &line) { line.setPlaceholderString(localized(key)); });
}

NSString textOf(const std::weak_ptr<NSTextField> &field) {
    const auto line = field.lock();
    return line ? line->stringValue() : NSString();
}

bool hasText(const NSString &text) { return !text.stringByTrimmingCharactersInSet(CharacterSet::blanks).isEmpty(); }

void showText(const std::weak_ptr<NSTextField> &field, const NSString &text) {
    tell(field, [&](NSTextField &line) {
        if (line.stringValue() != text)
            line.setStringValue(text);
    });
}

void endWith(NSWindowController &controller, std::int64_t code) {
    const auto window = controller.window();
    window->makeFirstResponder(nullptr);
    controller.close();
    NSApp()->stopModalWithCode(code);
}

}   // namespace inputWindow

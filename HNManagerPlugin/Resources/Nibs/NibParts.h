// What the nibs of the categories have in common: frame, buttons, search field, status line, cloud panel.
//
// Bindings  a part follows the manager's properties from the moment it is made and holds the manager weakly; the nib holds both.
// Outlets   searchField, bottomBar and cloudPanel set the manager's outlet of their own.
// Threads   main, while a nib is built.
#pragma once

#include <optional>

#include "HNManagerPlugin/Classes/ViewManager/HNMbaseViewManager.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIButton.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSStackView.h"
#include "toolkit/views/NibRegistry.h"

class HNMbaseViewModel;

namespace nibParts {

// Of a category's view; both bars go over its whole width.
inline constexpr double kWidth = 1000, kHeight = 660, kTopBar = 60, kBottomBar = 36;
inline constexpr double kList = kHeight - kTopBar - kBottomBar;   // what is left between the bars

using Manager = std::shared_ptr<HNMbaseViewManager>;

// Distances from the edges of `root` and sizes of the view's own; what is absent follows from the others.
// Left and right change places in a layout from right to left.
struct Placing {
    std::optional<double> left = {}, top = {}, right = {}, bottom = {}, width = {}, height = {};
};
// Adds the view to `root`.
void place(const std::shared_ptr<NSView> &root, const std::shared_ptr<NSView> &view, const Placing &placing);

// One line without text; what does not fit ends in an ellipsis.
[[nodiscard]] std::shared_ptr<NSTextField> label(const char *identifier, double size = NSFont::kSystemFontSize);

// For Property<NSString>::observe.
template <class View>
std::function<void(const NSString &)> showsIn(const std::shared_ptr<View> &view, void (View::*set)(NSString)) {
    return [weak = std::weak_ptr(view), set](const NSString &text) { tell(weak, [&](View &v) { (v.*set)(text); }); };
}
void enabledBy(Property<bool> &flag, const std::shared_ptr<NSControl> &control);

// ---------------------------------------------------------------- the top bar

struct ButtonPlace {
    const char *identifier;
    Property<NSString> HNMbaseViewManager::*title;
    const char *selector;
};
[[nodiscard]] std::shared_ptr<RUIButton> button(Nib &nib, const Manager &manager, const ButtonPlace &place);
// An entry of a menu; an empty selector leaves it greyed.
std::shared_ptr<NSMenuItem> menuEntry(const std::shared_ptr<NSMenu> &menu, const Manager &manager, const char *selector,
                                      Property<NSString> &title);
[[nodiscard]] std::shared_ptr<NSStackView> topBar(Nib &nib, const char *identifier);
// Takes the room that the buttons leave.
[[nodiscard]] std::shared_ptr<NSTextField> searchField(Nib &nib, const Manager &manager, const char *selector);

// ---------------------------------------------------------------- below it

// A list that scrolls, of the size between the bars.
[[nodiscard]] std::shared_ptr<NSView> scrolling(Nib &nib, const std::shared_ptr<NSView> &list, double width = kWidth);
[[nodiscard]] std::shared_ptr<NSView> bottomBar(Nib &nib, const Manager &manager);
// Hangs in no view; the manager shows it.
void cloudPanel(Nib &nib, const Manager &manager, const char *retrySelector);
// The nib's view; the owner, where it is a category's controller, gets both.
void setView(Nib &nib, const std::shared_ptr<NSView> &root, const Manager &manager, const std::shared_ptr<HNMbaseViewModel> &model);

// ---------------------------------------------------------------- input windows

struct DialogButtons {
    std::shared_ptr<RUIButton> cancel, save;
};
// At the lower right corner of a window that is `width` wide; the Esc key presses the first, the Return key the second.
[[nodiscard]] DialogButtons dialogButtons(Nib &nib, const std::shared_ptr<NSObject> &owner, double width, const char *cancelSelector,
                                          const char *saveSelector);

}   // namespace nibParts

#include "toolkit/views/NSPopUpButton.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/TextMeasurer.h"
#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSPopUpButton, NSButton, .key("indexOfSelectedItem", keys::get(&NSPopUpButton::indexOfSelectedItem), keys::set(&NSPopUpButton::selectItemAtIndex))
                   .key("titleOfSelectedItem", &NSPopUpButton::titleOfSelectedItem))

void NSPopUpButton::initWithFrame(const NSRect &frame) {
    NSButton::initWithFrame(frame);
    setMenu(make<NSMenu>(NSString("")));
}

void NSPopUpButton::setPullsDown(bool pullsDown) {
    pullsDown_ = pullsDown;
    noteChanged("pullsDown");
}

NSSize NSPopUpButton::intrinsicContentSize() const {
    constexpr double kArrow = 28, kInset = 8, kLeastHeight = 28;
    NSSize widest;
    for (const auto &item : itemArray()) {
        const NSSize size = TextMeasurer::current()->boundingRect(item->title, font(), 0);
        widest = {std::max(widest.width, size.width), std::max(widest.height, size.height)};
        if (pullsDown_)
            break;
    }
    return {std::ceil(widest.width) + kArrow + kInset, std::max(kLeastHeight, std::ceil(widest.height) + kInset)};
}

void NSPopUpButton::addItemWithTitle(NSString title) {
    const auto item = make<NSMenuItem>(std::move(title));
    menu()->addItem(item);
    noteChanged("items");
    if (!pullsDown_ && numberOfItems() == 1)
        selectItemAtIndex(0);
}

void NSPopUpButton::addItemsWithTitles(const std::vector<NSString> &titles) {
    for (const NSString &title : titles)
        addItemWithTitle(title);
}

void NSPopUpButton::removeAllItems() {
    menu()->removeAllItems();
    selected_.reset();
    noteChanged("items");
}

std::int64_t NSPopUpButton::indexOfSelectedItem() const {
    const auto item = selected_.lock();
    return item ? menu()->indexOfItem(item) : -1;
}

NSString NSPopUpButton::titleOfSelectedItem() const {
    const auto item = selected_.lock();
    return item ? item->title : NSString();
}

void NSPopUpButton::selectItemAtIndex(std::int64_t index) {
    assertMain("NSPopUpButton selectItemAtIndex:");
    const auto item = menu()->itemAtIndex(index);
    if (!item && index != -1)
        return;
    tell(selected_, [](NSMenuItem &old) { old.state = NSOffState; });
    selected_ = item;
    if (item)
        item->state = NSOnState;
    noteChanged("indexOfSelectedItem");
}

void NSPopUpButton::selectItemWithTitle(const NSString &title) {
    if (const auto item = menu()->itemWithTitle(title))
        selectItemAtIndex(menu()->indexOfItem(item));
}

void NSPopUpButton::selectItemWithTag(std::int64_t tag) {
    if (const auto item = menu()->itemWithTag(tag))
        selectItemAtIndex(menu()->indexOfItem(item));
}

bool NSPopUpButton::chooseItemAtIndex(std::int64_t index) {
    const auto item = menu()->itemAtIndex(index);
    if (!item || !isEnabled() || !item->enabled || item->hidden || item->isSeparator())
        return false;
    const auto self = selfOf(this);
    if (!pullsDown_)
        selectItemAtIndex(index);
    if (!item->action.empty())
        menu()->performActionForItemAtIndex(index);
    else
        sendAction();
    return true;
}

void NSPopUpButton::performClick() {
    assertMain("NSPopUpButton performClick:");
    if (!isEnabled() || isHiddenOrHasHiddenAncestor())
        return;
    const auto self = selfOf(this);
    const auto shown = menu();
    shown->willOpen();
    // What the button itself shows is no choice.
    const auto face = pullsDown_ ? shown->itemAtIndex(0) : nullptr;
    const bool wasHidden = face && std::exchange(face->hidden, true);
    const auto item = Presenter::current()->popUpMenu(shown, {0, 0}, self);
    if (face)
        face->hidden = wasHidden;
    shown->didClose();
    if (!item)
        return;
    if (item->menu() == shown)
        chooseItemAtIndex(shown->indexOfItem(item));
    else if (const auto owner = item->menu())
        owner->performActionForItemAtIndex(owner->indexOfItem(item));
}

std::string NSPopUpButton::describeContent() const {
    return "\"" + titleOfSelectedItem().str() + "\" of " + std::to_string(numberOfItems()) + (isEnabled() ? "" : " disabled");
}

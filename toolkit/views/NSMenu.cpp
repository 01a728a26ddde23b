#include "toolkit/views/NSMenu.h"

#include <algorithm>

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/Presenter.h"

HN_CLASS_TABLE(NSMenuItem, NSObjectTable, .key("title", &NSMenuItem::title).key("tag", &NSMenuItem::tag).key("state", &NSMenuItem::state)
                   .key("enabled", &NSMenuItem::enabled).key("hidden", &NSMenuItem::hidden)
                   .key("representedObject", &NSMenuItem::representedObject)
                   .key("submenu", keys::get(&NSMenuItem::submenu), keys::set(&NSMenuItem::setSubmenu)))
HN_CLASS_TABLE(NSMenu, NSObjectTable, .key("title", keys::get(&NSMenu::title), keys::set(&NSMenu::setTitle))
                   .key("numberOfItems", &NSMenu::numberOfItems))

// ---------------------------------------------------------------- NSMenuItem

void NSMenuItem::init(NSString titleText, std::string actionName, NSString key) {
    title = std::move(titleText);
    action = std::move(actionName);
    keyEquivalent = std::move(key);
}

std::shared_ptr<NSMenuItem> NSMenuItem::separatorItem() {
    const auto item = make<NSMenuItem>(NSString(""));
    item->isSeparator_ = true;
    return item;
}

NSMenuItem::~NSMenuItem() {
    std::vector<std::shared_ptr<NSMenu>> menus;
    if (submenu_)
        menus.push_back(std::move(submenu_));
    NSMenu::endIteratively(menus);
}

void NSMenuItem::setSubmenu(std::shared_ptr<NSMenu> submenu) { submenu_ = std::move(submenu); }

// ---------------------------------------------------------------- NSMenu

NSMenu::~NSMenu() {
    std::vector<std::shared_ptr<NSMenu>> menus;
    for (const auto &item : items_)
        if (item.use_count() == 1 && item->submenu_)
            menus.push_back(std::move(item->submenu_));
    endIteratively(menus);
}

// Takes the submenus out of what nobody else holds before it ends, so that no destructor meets a level below.
void NSMenu::endIteratively(std::vector<std::shared_ptr<NSMenu>> &menus) {
    while (!menus.empty()) {
        const auto menu = std::move(menus.back());
        menus.pop_back();
        if (menu.use_count() > 1)
            continue;
        for (const auto &item : menu->items_)
            if (item.use_count() == 1 && item->submenu_)
                menus.push_back(std::move(item->submenu_));
    }
}

std::shared_ptr<NSMenuItem> NSMenu::itemAtIndex(std::int64_t index) const {
    return index >= 0 && index < static_cast<std::int64_t>(items_.size()) ? items_[static_cast<std::size_t>(index)] : nullptr;
}

std::shared_ptr<NSMenuItem> NSMenu::itemWithTitle(const NSString &title) const {
    const auto found = std::ranges::find_if(items_, [&](const auto &item) { return item->title == title; });
    return found == items_.end() ? nullptr : *found;
}

std::shared_ptr<NSMenuItem> NSMenu::itemWithTag(std::int64_t tag) const {
    const auto found = std::ranges::find_if(items_, [&](const auto &item) { return item->tag == tag; });
    return found == items_.end() ? nullptr : *found;
}

std::int64_t NSMenu::indexOfItem(const std::shared_ptr<NSMenuItem> &item) const {
    const auto found = std::ranges::find(items_, item);
    return found == items_.end() ? -1 : found - items_.begin();
}

std::shared_ptr<NSMenuItem> NSMenu::addItemWithTitle_action_keyEquivalent(NSString title, std::string action, NSString keyEquivalent) {
    auto item = make<NSMenuItem>(std::move(title), std::move(action), std::move(keyEquivalent));
    addItem(item);
    return item;
}

void NSMenu::insertItem_atIndex(const std::shared_ptr<NSMenuItem> &item, std::int64_t index) {
    assertMain("NSMenu insertItem:atIndex:");
    if (!item || item->menu())
        return;
    item->menu_ = selfOf(this);
    items_.insert(items_.begin() + std::clamp<std::int64_t>(index, 0, static_cast<std::int64_t>(items_.size())), item);
}

void NSMenu::removeItem(const std::shared_ptr<NSMenuItem> &item) { removeItemAtIndex(indexOfItem(item)); }

void NSMenu::removeItemAtIndex(std::int64_t index) {
    assertMain("NSMenu removeItemAtIndex:");
    if (const auto item = itemAtIndex(index)) {
        item->menu_.reset();
        items_.erase(items_.begin() + index);
    }
}

void NSMenu::removeAllItems() {
    assertMain("NSMenu removeAllItems");
    for (const auto &item : items_)
        item->menu_.reset();
    items_.clear();
}

bool NSMenu::popUpContextMenu_withEvent_forView(const std::shared_ptr<NSMenu> &menu, NSEvent &event, const std::shared_ptr<NSView> &view) {
    if (!menu)
        return false;
    menu->willOpen();
    const NSPoint point = view ? view->convertPoint_fromView(event.locationInWindow, nullptr) : event.locationInWindow;
    const auto item = menu->numberOfItems() > 0 ? Presenter::current()->popUpMenu(menu, point, view) : nullptr;
    menu->didClose();
    const auto owner = item ? item->menu() : nullptr;
    return owner && owner->performActionForItemAtIndex(owner->indexOfItem(item));
}

void NSMenu::willOpen() {
    const auto self = selfOf(this);
    if (const auto delegate = this->delegate()) {
        delegate->menuNeedsUpdate(*this);
        delegate->menuWillOpen(*this);
    }
}

void NSMenu::didClose() {
    const auto self = selfOf(this);
    if (const auto delegate = this->delegate())
        delegate->menuDidClose(*this);
}

bool NSMenu::performActionForItemAtIndex(std::int64_t index) {
    const auto item = itemAtIndex(index);
    if (!item || item->isSeparator() || !item->enabled || item->hidden || item->action.empty())
        return false;
    return NSApplication::sharedApplication()->sendAction_to_from(item->action, item->target.lock(), item);
}

bool NSMenu::performKeyEquivalent(const NSEvent &event) {
    constexpr NSEventModifierFlags kLooked =
        NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
    if (const auto delegate = this->delegate())
        delegate->menuNeedsUpdate(*this);
    const Items items = items_;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto &item = items[i];
        if (item->hasSubmenu() && item->submenu()->performKeyEquivalent(event))
            return true;
        if (!item->keyEquivalent.isEmpty() && item->keyEquivalent == event.characters &&
            (event.modifierFlags & kLooked) == item->keyEquivalentModifierMask)
            return performActionForItemAtIndex(indexOfItem(item));
    }
    return false;
}

std::string NSMenu::toString() const {
    struct Open {
        const NSMenu *menu;
        std::size_t index, depth;
    };
    std::string text;
    std::vector<Open> open{{this, 0, 0}};
    while (!open.empty()) {
        Open &level = open.back();
        if (level.index == level.menu->items_.size()) {
            open.pop_back();
            continue;
        }
        const auto &item = level.menu->items_[level.index++];
        const std::size_t depth = level.depth;
        text += std::string(2 * depth, ' ') + (item->isSeparator() ? "---" : item->title.str());
        text += item->state ? " on" : "";
        text += item->enabled ? "" : " disabled";
        text += item->hidden ? " hidden\n" : "\n";
        if (item->submenu_)
            open.push_back({item->submenu_.get(), 0, depth + 1});
    }
    return text;
}

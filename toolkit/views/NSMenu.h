// Menus and their entries.
//
// Choosing   performActionForItemAtIndex runs target->perform(action, {item}) inside the guard; a null target sends the
//            action along the responder chain. Separators, disabled and hidden entries do nothing.
// Enabling   plain: an entry is enabled as it was set, and by menuNeedsUpdate of the delegate just before it shows.
// Owners     a menu holds its entries, an entry its submenu; links back are weak. Ending a menu of any depth does not
//            recurse. Threads: main.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "toolkit/NSImage.h"
#include "toolkit/views/NSEvent.h"

class NSMenu;
class NSView;

class NSMenuItem : public NSObject {
public:
    using NSObject::init;
    void init(NSString title, std::string action = {}, NSString keyEquivalent = NSString(""));
    [[nodiscard]] static std::shared_ptr<NSMenuItem> separatorItem();
    ~NSMenuItem() override;

    NSString title;
    std::string action;
    std::weak_ptr<NSObject> target;
    NSString keyEquivalent;
    NSEventModifierFlags keyEquivalentModifierMask = NSEventModifierFlagCommand;
    std::shared_ptr<NSImage> image;
    Value representedObject;
    NSString toolTip;
    std::int64_t tag = 0;
    int state = 0;
    bool enabled = true, hidden = false;

    [[nodiscard]] bool isSeparator() const { return isSeparator_; }
    [[nodiscard]] const std::shared_ptr<NSMenu> &submenu() const { return submenu_; }
    void setSubmenu(std::shared_ptr<NSMenu> submenu);
    [[nodiscard]] bool hasSubmenu() const { return submenu_ != nullptr; }
    [[nodiscard]] std::shared_ptr<NSMenu> menu() const { return menu_.lock(); }
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSMenu;
    std::weak_ptr<NSMenu> menu_;
    std::shared_ptr<NSMenu> submenu_;
    bool isSeparator_ = false;
};

class NSMenuDelegate {
public:
    virtual ~NSMenuDelegate() = default;
    // Just before the menu shows or a key equivalent is looked for in it.
    virtual void menuNeedsUpdate(NSMenu &) {}
    virtual void menuWillOpen(NSMenu &) {}
    virtual void menuDidClose(NSMenu &) {}
};

class NSMenu : public NSObject {
public:
    using Items = std::vector<std::shared_ptr<NSMenuItem>>;
    using NSObject::init;
    void init(NSString title) { title_ = std::move(title); }
    ~NSMenu() override;

    [[nodiscard]] const NSString &title() const { return title_; }
    void setTitle(NSString title) { title_ = std::move(title); }
    [[nodiscard]] const Items &itemArray() const { return items_; }
    [[nodiscard]] std::size_t numberOfItems() const { return items_.size(); }
    // Null out of range.
    [[nodiscard]] std::shared_ptr<NSMenuItem> itemAtIndex(std::int64_t index) const;
    [[nodiscard]] std::shared_ptr<NSMenuItem> itemWithTitle(const NSString &title) const;
    [[nodiscard]] std::shared_ptr<NSMenuItem> itemWithTag(std::int64_t tag) const;
    // -1 where it does not stand here.
    [[nodiscard]] std::int64_t indexOfItem(const std::shared_ptr<NSMenuItem> &item) const;
    void addItem(const std::shared_ptr<NSMenuItem> &item) { insertItem_atIndex(item, static_cast<std::int64_t>(items_.size())); }
    std::shared_ptr<NSMenuItem> addItemWithTitle_action_keyEquivalent(NSString title, std::string action, NSString keyEquivalent = NSString(""));
    // An index out of range is cut to it; null, and an item that stands in a menu already, are ignored.
    void insertItem_atIndex(const std::shared_ptr<NSMenuItem> &item, std::int64_t index);
    void removeItem(const std::shared_ptr<NSMenuItem> &item);
    void removeItemAtIndex(std::int64_t index);
    void removeAllItems();

    template <class T> void setDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<NSMenuDelegate>(delegate); }
    void setDelegate(std::nullptr_t) { delegate_.reset(); }
    [[nodiscard]] std::shared_ptr<NSMenuDelegate> delegate() const { return delegate_.lock(); }
    // Shows the menu through the presenter at the event's place and performs what was chosen. True where something was.
    static bool popUpContextMenu_withEvent_forView(const std::shared_ptr<NSMenu> &menu, NSEvent &event,
                                                   const std::shared_ptr<NSView> &view);
    // For hosts: before and after it shows.
    void willOpen();
    void didClose();
    // True when the entry was there, enabled, and its action taken.
    bool performActionForItemAtIndex(std::int64_t index);
    bool performKeyEquivalent(const NSEvent &event);
    [[nodiscard]] bool autoenablesItems() const { return autoenables_; }
    void setAutoenablesItems(bool autoenables) { autoenables_ = autoenables; }

    // One line per entry, submenus two blanks deeper.
    [[nodiscard]] std::string toString() const;
    HN_DECLARE_CLASS_TABLE

private:
    friend class NSMenuItem;
    static void endIteratively(std::vector<std::shared_ptr<NSMenu>> &menus);
    NSString title_;
    Items items_;
    std::weak_ptr<NSMenuDelegate> delegate_;
    bool autoenables_ = true;
};

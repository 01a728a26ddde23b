#include "toolkit/services/NSNotificationCenter.h"

#include "toolkit/dispatch/Guard.h"

HN_CLASS_TABLE(NSNotification, NSObjectTable,
               .key("name", &NSNotification::name).key("object", &NSNotification::object).key("userInfo", &NSNotification::userInfo))

NSNotificationCenter &NSNotificationCenter::defaultCenter() {
    static auto *center = new NSNotificationCenter;
    return *center;
}

void NSNotificationCenter::add(std::shared_ptr<Entry> entry) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(entries_, [](const auto &e) { return e->owner.expired(); });
    entries_.push_back(std::move(entry));
}

void NSNotificationCenter::addObserver_selector_name_object(const id &observer, std::string_view selector, const NSString &name,
                                                            const id &object) {
    add(std::make_shared<Entry>(Entry{observer.get(), observer, observer, std::string(selector), {}, name, object.get()}));
}

void NSNotificationCenter::addObserver_block(const std::shared_ptr<void> &owner, const NSString &name,
                                             std::function<void(const std::shared_ptr<NSNotification> &)> block) {
    add(std::make_shared<Entry>(Entry{owner.get(), owner, {}, {}, std::move(block), name, nullptr}));
}

void NSNotificationCenter::removeWhere(const std::function<bool(const Entry &)> &test) {
    std::vector<std::shared_ptr<Entry>> gone;   // ends without the lock
    const std::scoped_lock lock(mutex_);
    std::erase_if(entries_, [&](const auto &entry) {
        if (!test(*entry))
            return false;
        entry->removed = true;
        gone.push_back(entry);
        return true;
    });
}

void NSNotificationCenter::removeObserver(const void *observer) {
    removeWhere([observer](const Entry &e) { return e.key == observer; });
}

void NSNotificationCenter::removeObserver_name(const void *observer, const NSString &name) {
    removeWhere([&](const Entry &e) { return e.key == observer && e.name == name; });
}

void NSNotificationCenter::reset() {
    removeWhere([](const Entry &) { return true; });
}

void NSNotificationCenter::postNotificationName_object(const NSString &name, const id &object, const Value &userInfo) {
    std::vector<std::shared_ptr<Entry>> told;
    {
        const std::scoped_lock lock(mutex_);
        for (const auto &entry : entries_)
            if (entry->name == name && (!entry->object || entry->object == object.get()))
                told.push_back(entry);
    }
    auto notice = make<NSNotification>();
    notice->name = name;
    notice->object = object;
    notice->userInfo = userInfo;
    for (const auto &entry : told) {
        {
            const std::scoped_lock lock(mutex_);
            if (entry->removed)
                continue;
        }
        const std::shared_ptr<void> keep = entry->owner.lock();
        if (!keep)
            continue;
        dispatch::guarded("a notification", [&] {
            if (entry->block)
                entry->block(notice);
            else if (const id receiver = entry->receiver.lock())
                receiver->perform(entry->selector, {Value(notice)});
        });
    }
}

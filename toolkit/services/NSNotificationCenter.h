// Notices under a name, told to whoever observes them.
//
// Order    observers are told in the order in which they were added, from a copy of their list: one that is removed or
//          ended while the notice is being told is passed over, one added meanwhile is not told.
// Links    observers are held weakly; an ended one drops out. The receiver lives for the length of its call.
// Threads  any; observers are told on the posting thread, inside the guard.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "toolkit/NSObject.h"

class NSNotification : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE
    NSString name;
    id object;
    Value userInfo;
};

class NSNotificationCenter {
public:
    [[nodiscard]] static NSNotificationCenter &defaultCenter();

    // `object` null: from whomever.
    void addObserver_selector_name_object(const id &observer, std::string_view selector, const NSString &name,
                                          const id &object = nullptr);
    // For hosts: a block that lives as long as `owner`.
    void addObserver_block(const std::shared_ptr<void> &owner, const NSString &name,
                           std::function<void(const std::shared_ptr<NSNotification> &)> block);
    void removeObserver(const void *observer);
    void removeObserver_name(const void *observer, const NSString &name);
    void postNotificationName_object(const NSString &name, const id &object = nullptr, const Value &userInfo = {});
    // Forgets all; for the end of a test.
    void reset();

private:
    struct Entry {
        const void *key;
        std::weak_ptr<void> owner;
        std::weak_ptr<NSObject> receiver;
        std::string selector;
        std::function<void(const std::shared_ptr<NSNotification> &)> block;
        NSString name;
        const void *object;
        bool removed = false;
    };
    void add(std::shared_ptr<Entry> entry);
    void removeWhere(const std::function<bool(const Entry &)> &test);

    std::mutex mutex_;
    std::vector<std::shared_ptr<Entry>> entries_;
};

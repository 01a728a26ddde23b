// A record for lists in tests: a name, a number, children.
#pragma once

#include <initializer_list>
#include <string>

#include "toolkit/lists/NSMutableArray.h"

class Item : public NSObject {
public:
    using NSObject::init;
    void init(NSString text, int value = 0) {
        name = std::move(text);
        number = value;
    }
    HN_DECLARE_CLASS_TABLE
    [[nodiscard]] bool isEqual(const NSObject *other) const override {
        const auto *item = dynamic_cast<const Item *>(other);
        return item && (item == this || (equalByNumber && item->number == number));
    }

    NSString name;
    int number = 0;
    bool isLeaf = false;
    bool equalByNumber = false;
    int timesRead = 0;
    std::shared_ptr<NSMutableArray> children = make<NSMutableArray>();
};

inline HN_CLASS_TABLE(Item, NSObjectTable,
    .key("name", [](NSObject &o) {
        ++static_cast<Item &>(o).timesRead;
        return Value(static_cast<Item &>(o).name);
    })
    .key("number", &Item::number)
    .key("isLeaf", &Item::isLeaf)
    .key("children", &Item::children))

inline std::shared_ptr<Item> item(const char *name, int number = 0) { return make<Item>(NSString(name), number); }

// A folder with these children.
inline std::shared_ptr<Item> folder(const char *name, std::initializer_list<std::shared_ptr<Item>> children) {
    auto made = item(name);
    for (const auto &child : children)
        made->children->addObject(child);
    return made;
}

// "a b c"; an absent name is "-", an empty one "''".
inline std::string names(const NSArray &items) {
    std::string text;
    for (const id &object : items) {
        const NSString &name = static_cast<Item &>(*object).name;
        text += (text.empty() ? "" : " ") + (name.isNil() ? "-" : name.isEmpty() ? "''" : name.str());
    }
    return text;
}

inline NSArray items(std::initializer_list<const char *> list) {
    NSArray::Items made;
    for (const char *name : list)
        made.push_back(item(name));
    return made;
}

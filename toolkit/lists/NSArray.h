// An immutable list of objects, as a value: a copy shares the elements and costs one counter.
//
// Walking  `for (const id &object : list->snapshot())`; nobody can change what is being walked.
// Absent   an index out of range gives a null object, never an error.
// Threads  values; copies may be used on any thread at the same time.
#pragma once

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/Value.h"
#include "toolkit/lists/NSIndexSet.h"

class NSArray {
public:
    using Items = std::vector<id>;

    NSArray() = default;
    NSArray(Items items);
    NSArray(std::initializer_list<id> items) : NSArray(Items(items)) {}
    template <class T> [[nodiscard]] static NSArray of(const std::vector<std::shared_ptr<T>> &items) {
        return NSArray(Items(items.begin(), items.end()));
    }
    // The objects among the values.
    [[nodiscard]] static NSArray fromList(const Value::List &values);
    NSArray(const NSArray &other) noexcept;
    NSArray(NSArray &&other) noexcept : block_(other.block_) { other.block_ = nullptr; }
    NSArray &operator=(NSArray other) noexcept;
    ~NSArray();

    [[nodiscard]] std::size_t count() const { return items().size(); }
    [[nodiscard]] bool isEmpty() const { return items().empty(); }
    [[nodiscard]] const id &objectAtIndex(std::size_t index) const;
    [[nodiscard]] const id &operator[](std::size_t index) const { return objectAtIndex(index); }
    [[nodiscard]] const id &firstObject() const { return objectAtIndex(0); }
    [[nodiscard]] const id &lastObject() const { return objectAtIndex(count() - 1); }
    // Null where the object is of another class.
    template <class T> [[nodiscard]] std::shared_ptr<T> at(std::size_t index) const {
        return std::dynamic_pointer_cast<T>(objectAtIndex(index));
    }
    // Indexes out of range are left out.
    [[nodiscard]] NSArray objectsAtIndexes(const NSIndexSet &indexes) const;
    // The same object or one that isEqual; NSNotFound for none.
    [[nodiscard]] std::size_t indexOfObject(const id &object) const;
    [[nodiscard]] std::size_t indexOfObjectIdenticalTo(const id &object) const;
    [[nodiscard]] bool containsObject(const id &object) const { return indexOfObject(object) != NSNotFound; }

    [[nodiscard]] Items::const_iterator begin() const { return items().begin(); }
    [[nodiscard]] Items::const_iterator end() const { return items().end(); }
    [[nodiscard]] const Items &items() const;
    // The same objects in the same order.
    bool operator==(const NSArray &other) const { return block_ == other.block_ || items() == other.items(); }
    operator Value::List() const { return Value::List(begin(), end()); }

private:
    friend class NSMutableArray;
    struct Block {
        std::atomic<std::size_t> owners{1};
        Items items;
    };
    static void release(Block *block);
    // The items for their one owner, copied first where others look at them.
    [[nodiscard]] Items &writable();

    Block *block_ = nullptr;
};

namespace lists {

// Lets objects go without recursion: what an ending object lets go in its turn waits until that one has ended. A chain
// of 100,000 nodes ends in the depth of one.
void drop(NSArray::Items items);

}  // namespace lists

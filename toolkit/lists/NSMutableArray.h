// A list that a model and a controller share.
//
// Threads  any; every operation locks. Walking takes a snapshot, which costs nothing until the list changes.
// Absent   a row out of range is null; removing or replacing one does nothing; null objects are never taken in.
// Telling  the list tells nobody: who changes it behind a controller's back calls its rearrangeObjects.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "toolkit/NSObject.h"
#include "toolkit/lists/NSArray.h"
#include "toolkit/lists/NSIndexSet.h"
#include "toolkit/lists/NSSortDescriptor.h"

class NSMutableArray : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    using NSObject::init;
    void init(NSArray objects) { setArray(std::move(objects)); }

    [[nodiscard]] NSArray snapshot() const;
    [[nodiscard]] std::shared_ptr<NSMutableArray> mutableCopy() const { return make<NSMutableArray>(snapshot()); }
    // Grows with every change.
    [[nodiscard]] std::uint64_t version() const;

    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool isEmpty() const { return count() == 0; }
    [[nodiscard]] id objectAtIndex(std::size_t index) const;
    template <class T> [[nodiscard]] std::shared_ptr<T> at(std::size_t index) const {
        return std::dynamic_pointer_cast<T>(objectAtIndex(index));
    }
    [[nodiscard]] id firstObject() const { return objectAtIndex(0); }
    [[nodiscard]] id lastObject() const { return snapshot().lastObject(); }
    [[nodiscard]] NSArray objectsAtIndexes(const NSIndexSet &indexes) const { return snapshot().objectsAtIndexes(indexes); }
    // The same object or one that isEqual; NSNotFound for none.
    [[nodiscard]] std::size_t indexOfObject(const id &object) const { return snapshot().indexOfObject(object); }
    [[nodiscard]] std::size_t indexOfObjectIdenticalTo(const id &object) const { return snapshot().indexOfObjectIdenticalTo(object); }
    [[nodiscard]] bool containsObject(const id &object) const { return snapshot().containsObject(object); }

    void addObject(id object);
    void addObjectsFromArray(const NSArray &objects);
    // An index beyond the end appends.
    void insertObject_atIndex(id object, std::size_t index);
    // `indexes` count after the insertion; the n-th object gets the n-th of them.
    void insertObjects_atIndexes(const NSArray &objects, const NSIndexSet &indexes);
    void replaceObjectAtIndex_withObject(std::size_t index, id object);
    // Every occurrence of the object or of one that isEqual.
    void removeObject(const id &object);
    void removeObjectAtIndex(std::size_t index);
    void removeObjectsAtIndexes(const NSIndexSet &indexes);
    // What is one of the objects or isEqual to one. Objects of the list itself are found at once; each of the others
    // is compared with all.
    void removeObjectsInArray(const NSArray &objects);
    // Only the very objects; for long lists.
    void removeObjectsIdenticalIn(const NSArray &objects);
    void removeLastObject();
    void removeAllObjects();
    void setArray(NSArray objects);
    void exchangeObjectAtIndex_withObjectAtIndex(std::size_t a, std::size_t b);

    // Sorts what is in the list at the call; keys are read without the lock. What others add meanwhile stands behind.
    void sortUsingDescriptors(const NSSortDescriptors &descriptors);
    void sortUsingComparator(const std::function<std::weak_ordering(const id &, const id &)> &comparator);

    [[nodiscard]] NSString description() const override;

private:
    template <class Change> void change(Change &&change);
    template <class Test> void removeWhere(Test &&test);
    void takeOrder(NSArray::Items ordered, std::uint64_t since);

    mutable std::mutex mutex_;
    NSArray items_;
    std::uint64_t version_ = 0;
};

// Stands between a list and its views: the order on show and the selection.
//
// Content    a shared NSMutableArray. The controller's own operations change it and tell the observers at once; whoever
//            changes the list directly calls rearrangeObjects afterwards.
// Arranged   without sort descriptors and filter the arranged objects are the content itself, so that a row taken out
//            of the list directly is gone here too; with them they are what the last rearrange made of it.
// Selection  rows of the arranged objects, and the objects that stood there when it was made. rearrangeObjects finds
//            these objects again by identity, even when the list was sorted or emptied in between.
// Notices    first the change of the rows, then the selection's where its rows changed; both states hold already when
//            the first notice comes. Observers are told from a copy of their list.
// Flags      as nibs set them: avoidsEmptySelection off, preservesSelection on, selectsInsertedObjects off.
// Threads    main.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/lists/ControllerObservers.h"
#include "toolkit/lists/ListChange.h"
#include "toolkit/lists/NSArray.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/lists/NSSortDescriptor.h"

class NSArrayController;

class NSArrayControllerObserver {
public:
    virtual ~NSArrayControllerObserver() = default;
    virtual void arrangedObjectsDidChange(NSArrayController &, const ListChange &) {}
    virtual void selectionIndexesDidChange(NSArrayController &) {}
};

class NSArrayController : public NSObject {
public:
    HN_DECLARE_CLASS_TABLE
    using Filter = std::function<bool(const id &)>;
    using ContentSource = std::function<std::shared_ptr<NSMutableArray>()>;

    void init() override;

    [[nodiscard]] std::shared_ptr<NSMutableArray> content();
    void setContent(std::shared_ptr<NSMutableArray> content);
    // Binds the content to a field that may be given another list: asked at each rearrange and before each change.
    void bindContentArray(ContentSource source);

    [[nodiscard]] NSArray arrangedObjects() const;
    [[nodiscard]] std::size_t arrangedCount() const;
    [[nodiscard]] id arrangedObjectAtIndex(std::size_t index) const;
    void rearrangeObjects();
    [[nodiscard]] const NSSortDescriptors &sortDescriptors() const { return sortDescriptors_; }
    // Both rearrange.
    void setSortDescriptors(NSSortDescriptors descriptors);
    void setFilter(Filter filter);

    [[nodiscard]] NSIndexSet selectionIndexes() const { return selection_; }
    // NSNotFound without a selection.
    [[nodiscard]] std::size_t selectionIndex() const { return selection_.firstIndex(); }
    [[nodiscard]] NSArray selectedObjects() const { return selected_; }
    // Rows out of range are left out. True where the selection changed. An empty set clears, whatever the flags say.
    bool setSelectionIndexes(const NSIndexSet &indexes);
    bool setSelectionIndex(std::size_t index);
    bool addSelectionIndexes(const NSIndexSet &indexes);
    bool removeSelectionIndexes(const NSIndexSet &indexes);
    // Objects that are not arranged are left out.
    bool setSelectedObjects(const NSArray &objects);
    bool addSelectedObjects(const NSArray &objects);
    bool removeSelectedObjects(const NSArray &objects);

    // New objects stand at the end until the next rearrange.
    void addObject(id object);
    void addObjects(const NSArray &objects);
    void insertObject_atArrangedObjectIndex(id object, std::size_t index);
    // `indexes` count after the insertion.
    void insertObjects_atArrangedObjectIndexes(const NSArray &objects, const NSIndexSet &indexes);
    // By identity, from the content, whether on show or not.
    void removeObject(const id &object);
    void removeObjects(const NSArray &objects);
    void removeObjectAtArrangedObjectIndex(std::size_t index);
    void removeObjectsAtArrangedObjectIndexes(const NSIndexSet &indexes);
    // Removes the selected objects.
    void remove(const id &sender = {});

    [[nodiscard]] bool avoidsEmptySelection() const { return avoidsEmptySelection_; }
    void setAvoidsEmptySelection(bool flag) { avoidsEmptySelection_ = flag; }
    [[nodiscard]] bool preservesSelection() const { return preservesSelection_; }
    void setPreservesSelection(bool flag) { preservesSelection_ = flag; }
    [[nodiscard]] bool selectsInsertedObjects() const { return selectsInsertedObjects_; }
    void setSelectsInsertedObjects(bool flag) { selectsInsertedObjects_ = flag; }

    void addObserver(const std::shared_ptr<NSArrayControllerObserver> &observer) { observers_.add(observer); }
    void removeObserver(const NSArrayControllerObserver *observer) { observers_.remove(observer); }

    // "rows 3 selection {0-1}"
    [[nodiscard]] std::string toString() const;
    // The selection lies within the rows and names the selected objects; with an order of its own the controller
    // arranges each content object at most once. Always true while the list is ahead of the last rearrange.
    [[nodiscard]] bool isConsistent() const;

private:
    [[nodiscard]] bool arrangesByItself() const { return !sortDescriptors_.empty() || filter_; }
    void readSource();
    [[nodiscard]] bool isBehind() const;
    void arrange();
    [[nodiscard]] NSIndexSet indexesOf(const NSArray &objects) const;
    [[nodiscard]] NSIndexSet neverEmpty(NSIndexSet selection, std::size_t near) const;
    // Takes the selection without telling; true where the rows differ.
    bool takeSelection(NSIndexSet selection);
    void finishChange(const ListChange &change, bool selectionChanged);
    void tellSelection();

    std::shared_ptr<NSMutableArray> content_;
    ContentSource source_;
    std::uint64_t seenVersion_ = 0;
    std::shared_ptr<NSMutableArray> arranged_;   // used only where the controller arranges by itself
    NSSortDescriptors sortDescriptors_;
    Filter filter_;
    NSIndexSet selection_;
    NSArray selected_;
    bool avoidsEmptySelection_ = false;
    bool preservesSelection_ = true;
    bool selectsInsertedObjects_ = false;
    ControllerObservers<NSArrayControllerObserver> observers_;
};

#include "toolkit/lists/NSArrayController.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

HN_CLASS_TABLE(NSArrayController, NSObjectTable,
    .key("arrangedObjects", &NSArrayController::arrangedObjects)
    .key("selectedObjects", &NSArrayController::selectedObjects)
    .key("selectionIndex", &NSArrayController::selectionIndex)
    .key("selectionIndexes", [](NSObject &o) { return Value(Value::List(static_cast<NSArrayController &>(o).selectionIndexes())); },
         [](NSObject &o, const Value &v) { static_cast<NSArrayController &>(o).setSelectionIndexes(NSIndexSet::fromList(v.list())); })
    .key("content", [](NSObject &o) { return Value(static_cast<NSArrayController &>(o).content()); })
    .selector("rearrangeObjects", &NSArrayController::rearrangeObjects)
    .selector("addObject:", &NSArrayController::addObject)
    .selector("removeObject:", [](NSObject &o, const std::vector<Value> &arguments) {
        if (!arguments.empty())
            static_cast<NSArrayController &>(o).removeObject(arguments[0].object());
        return Value();
    })
    .selector("remove:", [](NSObject &o, const std::vector<Value> &) {
        static_cast<NSArrayController &>(o).remove();
        return Value();
    }))

void NSArrayController::init() {
    content_ = make<NSMutableArray>();
    arranged_ = make<NSMutableArray>();
}

// ---------------------------------------------------------------- content

void NSArrayController::readSource() {
    if (!source_)
        return;
    std::shared_ptr<NSMutableArray> bound = source_();
    if (bound == content_)
        return;
    content_ = std::move(bound);
    if (!content_)
        content_ = make<NSMutableArray>();
    seenVersion_ = content_->version() + 1;   // another list: never the version seen
}

bool NSArrayController::isBehind() const { return content_->version() != seenVersion_; }

std::shared_ptr<NSMutableArray> NSArrayController::content() {
    readSource();
    return content_;
}

void NSArrayController::setContent(std::shared_ptr<NSMutableArray> content) {
    source_ = nullptr;
    content_ = content ? std::move(content) : make<NSMutableArray>();
    rearrangeObjects();
}

void NSArrayController::bindContentArray(ContentSource source) {
    source_ = std::move(source);
    rearrangeObjects();
}

// ---------------------------------------------------------------- arranging

NSArray NSArrayController::arrangedObjects() const { return arrangesByItself() ? arranged_->snapshot() : content_->snapshot(); }
std::size_t NSArrayController::arrangedCount() const { return arrangesByItself() ? arranged_->count() : content_->count(); }
id NSArrayController::arrangedObjectAtIndex(std::size_t index) const {
    return arrangesByItself() ? arranged_->objectAtIndex(index) : content_->objectAtIndex(index);
}

void NSArrayController::arrange() {
    seenVersion_ = content_->version();
    if (!arrangesByItself())
        return arranged_->removeAllObjects();
    NSArray::Items items = content_->snapshot().items();
    if (filter_)
        std::erase_if(items, [this](const id &item) { return !filter_(item); });
    arranged_->setArray(lists::sorted(std::move(items), sortDescriptors_));
}

void NSArrayController::rearrangeObjects() {
    readSource();
    arrange();
    const NSIndexSet kept = preservesSelection_ ? indexesOf(selected_) : NSIndexSet();
    const bool changed = takeSelection(neverEmpty(kept, selection_.isEmpty() ? 0 : selection_.firstIndex()));
    finishChange({}, changed);
}

void NSArrayController::setSortDescriptors(NSSortDescriptors descriptors) {
    sortDescriptors_ = std::move(descriptors);
    rearrangeObjects();
}

void NSArrayController::setFilter(Filter filter) {
    filter_ = std::move(filter);
    rearrangeObjects();
}

// An object that is selected once is found once, also where the list holds it twice.
NSIndexSet NSArrayController::indexesOf(const NSArray &objects) const {
    NSMutableIndexSet indexes;
    if (objects.isEmpty())
        return indexes;
    std::unordered_map<NSObject *, std::size_t> wanted;
    for (const id &object : objects)
        ++wanted[object.get()];
    std::size_t row = 0;
    for (const id &object : arrangedObjects()) {
        if (const auto found = wanted.find(object.get()); found != wanted.end() && found->second > 0) {
            --found->second;
            indexes.addIndex(row);
        }
        ++row;
    }
    return indexes;
}

// ---------------------------------------------------------------- selection

NSIndexSet NSArrayController::neverEmpty(NSIndexSet selection, std::size_t near) const {
    const std::size_t count = arrangedCount();
    if (!avoidsEmptySelection_ || !selection.isEmpty() || count == 0)
        return selection;
    return NSIndexSet::indexSetWithIndex(std::min(near, count - 1));
}

bool NSArrayController::takeSelection(NSIndexSet selection) {
    const NSArray rows = arrangedObjects();
    selection = selection.clippedTo(rows.count());
    selected_ = rows.objectsAtIndexes(selection);
    if (selection == selection_)
        return false;
    selection_ = std::move(selection);
    return true;
}

bool NSArrayController::setSelectionIndexes(const NSIndexSet &indexes) {
    if (!takeSelection(indexes))
        return false;
    tellSelection();
    return true;
}

bool NSArrayController::setSelectionIndex(std::size_t index) {
    return setSelectionIndexes(index == NSNotFound ? NSIndexSet() : NSIndexSet::indexSetWithIndex(index));
}

bool NSArrayController::addSelectionIndexes(const NSIndexSet &indexes) {
    NSMutableIndexSet all(selection_);
    all.addIndexes(indexes);
    return setSelectionIndexes(all);
}

bool NSArrayController::removeSelectionIndexes(const NSIndexSet &indexes) {
    NSMutableIndexSet rest(selection_);
    rest.removeIndexes(indexes);
    return setSelectionIndexes(rest);
}

bool NSArrayController::setSelectedObjects(const NSArray &objects) { return setSelectionIndexes(indexesOf(objects)); }
bool NSArrayController::addSelectedObjects(const NSArray &objects) { return addSelectionIndexes(indexesOf(objects)); }
bool NSArrayController::removeSelectedObjects(const NSArray &objects) { return removeSelectionIndexes(indexesOf(objects)); }

// ---------------------------------------------------------------- inserting and removing

void NSArrayController::addObject(id object) {
    if (object)
        addObjects(NSArray{std::move(object)});
}

void NSArrayController::addObjects(const NSArray &objects) {
    readSource();
    insertObjects_atArrangedObjectIndexes(objects, NSIndexSet::indexSetWithIndexesInRange({arrangedCount(), objects.count()}));
}

void NSArrayController::insertObject_atArrangedObjectIndex(id object, std::size_t index) {
    if (object)
        insertObjects_atArrangedObjectIndexes(NSArray{std::move(object)}, NSIndexSet::indexSetWithIndex(std::min(index, arrangedCount())));
}

void NSArrayController::insertObjects_atArrangedObjectIndexes(const NSArray &objects, const NSIndexSet &indexes) {
    readSource();
    const bool behind = isBehind();
    const NSIndexSet inserted = indexes.clippedTo(arrangedCount() + objects.count());
    if (objects.isEmpty() || inserted.count() != objects.count())
        return;
    if (arrangesByItself()) {
        content_->addObjectsFromArray(objects);
        arranged_->insertObjects_atIndexes(objects, inserted);
    } else {
        content_->insertObjects_atIndexes(objects, inserted);
    }
    if (behind) {   // observers do not know the rows before this change
        rearrangeObjects();
        if (selectsInsertedObjects_)
            setSelectedObjects(objects);
        return;
    }
    seenVersion_ = content_->version();
    const NSIndexSet before = selection_;
    selection_ = selection_.afterInserting(inserted);   // the same objects: not read anew
    const NSIndexSet wanted = selectsInsertedObjects_ ? inserted : neverEmpty(selection_, 0);
    if (wanted != selection_)
        takeSelection(wanted);
    finishChange({ListChange::Kind::inserted, inserted}, selection_ != before);
}

void NSArrayController::removeObject(const id &object) {
    if (object)
        removeObjects(NSArray{object});
}

void NSArrayController::removeObjects(const NSArray &objects) {
    readSource();
    const std::unordered_set<id> gone(objects.begin(), objects.end());
    NSMutableIndexSet indexes;
    std::size_t row = 0;
    for (const id &object : arrangedObjects()) {
        if (gone.contains(object))
            indexes.addIndex(row);
        ++row;
    }
    if (arrangesByItself())   // what the filter hides goes too
        content_->removeObjectsIdenticalIn(objects), seenVersion_ = content_->version();
    removeObjectsAtArrangedObjectIndexes(indexes);
}

void NSArrayController::removeObjectAtArrangedObjectIndex(std::size_t index) {
    removeObjectsAtArrangedObjectIndexes(NSIndexSet::indexSetWithIndex(index));
}

void NSArrayController::removeObjectsAtArrangedObjectIndexes(const NSIndexSet &indexes) {
    readSource();
    const bool behind = isBehind();
    const NSIndexSet removed = indexes.clippedTo(arrangedCount());
    if (removed.isEmpty())
        return;
    if (arrangesByItself()) {
        content_->removeObjectsIdenticalIn(arranged_->objectsAtIndexes(removed));
        arranged_->removeObjectsAtIndexes(removed);
    } else {
        content_->removeObjectsAtIndexes(removed);
    }
    if (behind)
        return rearrangeObjects();
    seenVersion_ = content_->version();
    const bool changed = takeSelection(neverEmpty(selection_.afterRemoving(removed), removed.firstIndex()));
    finishChange({ListChange::Kind::removed, removed}, changed);
}

void NSArrayController::remove(const id &) { removeObjectsAtArrangedObjectIndexes(selection_); }

// ---------------------------------------------------------------- telling

void NSArrayController::finishChange(const ListChange &change, bool selectionChanged) {
    observers_.tell([&](auto &observer) { observer.arrangedObjectsDidChange(*this, change); });
    if (selectionChanged)
        tellSelection();
}

void NSArrayController::tellSelection() {
    observers_.tell([&](auto &observer) { observer.selectionIndexesDidChange(*this); });
}

// ---------------------------------------------------------------- checking

std::string NSArrayController::toString() const {
    return "rows " + std::to_string(arrangedCount()) + " selection " + selection_.toString();
}

bool NSArrayController::isConsistent() const {
    if (isBehind())
        return true;
    const NSArray rows = arrangedObjects();
    if (!selection_.isEmpty() && selection_.lastIndex() >= rows.count())
        return false;
    if (rows.objectsAtIndexes(selection_) != selected_)
        return false;
    if (!arrangesByItself())
        return true;
    std::unordered_map<NSObject *, std::size_t> left;
    for (const id &object : content_->snapshot())
        ++left[object.get()];
    return std::all_of(rows.begin(), rows.end(), [&left](const id &object) { return left[object.get()]-- > 0; });
}

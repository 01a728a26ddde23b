#include "toolkit/lists/NSTreeController.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

HN_CLASS_TABLE(NSTreeController, NSObjectTable,
    .key("arrangedObjects", &NSTreeController::arrangedObjects)
    .key("content", &NSTreeController::content)
    .key("selectedObjects", &NSTreeController::selectedObjects)
    .key("selectedNodes", [](NSObject &o) { return Value(Value::List(NSArray::of(static_cast<NSTreeController &>(o).selectedNodes()))); })
    .selector("rearrangeObjects", &NSTreeController::rearrangeObjects)
    .selector("remove:", [](NSObject &o, const std::vector<Value> &) {
        static_cast<NSTreeController &>(o).remove();
        return Value();
    }))

// Every node below `top` that was made, in the order of the outline; where `enter` gives false the walk does not go below.
// `leave` is called once all below a node was visited.
template <class Enter, class Leave>
void NSTreeController::walk(const std::shared_ptr<NSTreeNode> &top, Enter &&enter, Leave &&leave) {
    struct Frame {
        std::shared_ptr<NSTreeNode> node;
        std::size_t next;
    };
    std::vector<Frame> stack{{top, 0}};
    while (!stack.empty()) {
        Frame &frame = stack.back();
        if (frame.next < frame.node->children_.size()) {
            const std::shared_ptr<NSTreeNode> &child = frame.node->children_[frame.next++];
            if (enter(child))
                stack.push_back({child, 0});
            continue;
        }
        const std::shared_ptr<NSTreeNode> done = std::move(frame.node);
        stack.pop_back();
        if (!stack.empty())
            leave(done);
    }
}

void NSTreeController::init() {
    content_ = make<NSMutableArray>();
    root_ = make<NSTreeNode>();
    root_->inTree_ = true;
    root_->leaf_ = NSTreeNode::Leaf::no;
    root_->owner_ = selfOf(this);
}

// ---------------------------------------------------------------- objects and their nodes

// Whether objects are leaves. What answers for one object answers for the next of its class, too: it is looked up once.
class NSTreeController::LeafKey {
public:
    explicit LeafKey(std::string_view path) : path_(path) {}
    [[nodiscard]] NSTreeNode::Leaf of(NSObject &object) {
        if (path_.empty())
            return NSTreeNode::Leaf::unknown;
        if (const ClassTable *const table = &object.classTable(); table != table_) {
            table_ = table;
            getter_ = table->getter(path_);
        }
        const Value value = getter_ ? (*getter_)(object) : object.valueForKeyPath(path_);
        return value.boolValue() ? NSTreeNode::Leaf::yes : NSTreeNode::Leaf::no;
    }

private:
    std::string_view path_;
    const ClassTable *table_ = nullptr;
    const ClassTable::Getter *getter_ = nullptr;
};

NSArray NSTreeController::childObjectsOf(const NSTreeNode &node) const {
    if (&node == root_.get())
        return content_->snapshot();
    if (node.leaf_ == NSTreeNode::Leaf::yes || !node.representedObject_)
        return {};
    const Value children = node.representedObject_->valueForKeyPath(childrenKeyPath_.view());
    if (children.isList())
        return NSArray::fromList(children.list());
    const auto list = std::dynamic_pointer_cast<NSMutableArray>(children.object());
    return list ? list->snapshot() : NSArray();
}

std::shared_ptr<NSMutableArray> NSTreeController::listOf(const NSTreeNode &node) const {
    if (&node == root_.get())
        return content_;
    if (!node.representedObject_)
        return nullptr;
    auto list = std::dynamic_pointer_cast<NSMutableArray>(node.representedObject_->valueForKeyPath(childrenKeyPath_.view()).object());
    if (list)
        return list;
    list = make<NSMutableArray>();
    return node.representedObject_->setValue_forKey(Value(list), childrenKeyPath_.view()) ? list : nullptr;
}

// Each node that is made on demand looks at all above it; so deep down the nodes below are made at once, which looks once.
static constexpr std::size_t kLevelsMadeOnDemand = 32;

bool NSTreeController::syncChildren(NSTreeNode &node, const Objects &onPath, LeafKey &leafKey) {
    NSArray::Items objects = childObjectsOf(node).items();
    std::erase_if(objects, [&onPath](const id &object) { return onPath.contains(object.get()); });
    objects = lists::sorted(std::move(objects), sortDescriptors_);

    const bool same = std::equal(objects.begin(), objects.end(), node.children_.begin(), node.children_.end(),
                                 [](const id &object, const auto &child) { return child->representedObject_ == object; });
    if (!same) {
        std::unordered_multimap<NSObject *, std::shared_ptr<NSTreeNode>> old;
        for (const auto &child : node.children_)
            old.emplace(child->representedObject_.get(), child);
        NSTreeNodes children;
        children.reserve(objects.size());
        for (const id &object : objects) {
            if (const auto found = old.find(object.get()); found != old.end()) {
                children.push_back(std::move(found->second));
                old.erase(found);
            } else {
                children.push_back(make<NSTreeNode>(object));
                children.back()->owner_ = root_->owner_;
                children.back()->isUnmade_ = onPath.size() < kLevelsMadeOnDemand;
            }
        }
        node.adopt(std::move(children));
    }
    for (const auto &child : node.children_)
        child->leaf_ = leafKey.of(*child->representedObject_);
    return !same;
}

// The objects of a node and of all above it.
NSTreeController::Objects NSTreeController::pathTo(NSTreeNode &top) const {
    Objects onPath;
    for (auto node = selfOf(&top); node && node != root_; node = node->parentNode())
        onPath.insert(node->representedObject_.get());
    return onPath;
}

void NSTreeController::makeChildNodes(NSTreeNode &node) { syncBelow(node); }

bool NSTreeController::syncBelow(NSTreeNode &top) {
    Objects onPath = pathTo(top);
    LeafKey leafKey(leafKeyPath_.view());
    top.isUnmade_ = false;
    bool changed = syncChildren(top, onPath, leafKey);
    walk(
        selfOf(&top),
        [&](const std::shared_ptr<NSTreeNode> &node) {
            if (node->isUnmade_ || (node->leaf_ == NSTreeNode::Leaf::yes && node->children_.empty()))
                return false;
            onPath.insert(node->representedObject_.get());
            changed |= syncChildren(*node, onPath, leafKey);
            return true;
        },
        [&](const std::shared_ptr<NSTreeNode> &node) { onPath.erase(onPath.find(node->representedObject_.get())); });
    return changed;
}

void NSTreeController::setContent(std::shared_ptr<NSMutableArray> content) {
    content_ = content ? std::move(content) : make<NSMutableArray>();
    rearrangeObjects();
}

void NSTreeController::setSortDescriptors(NSSortDescriptors descriptors) {
    sortDescriptors_ = std::move(descriptors);
    rearrangeObjects();
}

void NSTreeController::rearrangeObjects() {
    const bool changed = syncBelow(*root_);
    finishChange({}, changed, {0}, preservesSelection_ ? selected_ : NSTreeNodes());
}

void NSTreeController::setChildNodes(NSTreeNode &node, NSTreeNodes children) {
    const auto list = listOf(node);
    if (!list)
        return;
    NSArray::Items objects;
    for (const auto &child : children) {
        child->owner_ = root_->owner_;
        objects.push_back(child->representedObject_);
    }
    list->setArray(std::move(objects));
    node.adopt(std::move(children));
    syncBelow(node);
    finishChange({}, true, {0}, selected_);
}

// ---------------------------------------------------------------- selection

NSTreeNodes NSTreeController::inOrder(const NSTreeNodes &nodes) const {
    std::unordered_set<NSTreeNode *> wanted;
    for (const auto &node : nodes)
        if (node && node != root_ && node->inTree_)
            wanted.insert(node.get());
    NSTreeNodes ordered;
    if (nodes.size() == 1 && !wanted.empty())
        return nodes;
    if (wanted.empty())
        return ordered;
    walk(
        root_,
        [&](const std::shared_ptr<NSTreeNode> &node) {
            if (wanted.contains(node.get()))
                ordered.push_back(node);
            return true;
        },
        [](const std::shared_ptr<NSTreeNode> &) {});
    return ordered;
}

bool NSTreeController::takeSelection(NSTreeNodes nodes) {
    nodes = inOrder(nodes);
    if (nodes == selected_)
        return false;
    selected_ = std::move(nodes);
    return true;
}

NSArray NSTreeController::selectedObjects() const {
    NSArray::Items objects;
    for (const auto &node : selected_)
        objects.push_back(node->representedObject_);
    return objects;
}

NSIndexPath NSTreeController::selectionIndexPath() const { return selected_.empty() ? NSIndexPath() : selected_.front()->indexPath(); }

std::vector<NSIndexPath> NSTreeController::selectionIndexPaths() const {
    std::vector<NSIndexPath> paths;
    for (const auto &node : selected_)
        paths.push_back(node->indexPath());
    return paths;
}

bool NSTreeController::setSelectedNodes(NSTreeNodes nodes) {
    if (!takeSelection(std::move(nodes)))
        return false;
    tellSelection();
    return true;
}

bool NSTreeController::setSelectionIndexPaths(const std::vector<NSIndexPath> &paths) {
    NSTreeNodes nodes;
    for (const NSIndexPath &path : paths)
        nodes.push_back(root_->descendantNodeAtIndexPath(path));
    const bool changed = takeSelection(std::move(nodes));
    tellSelection();   // also of the same one: an outline that hid the row meanwhile selects it again
    return changed;
}

bool NSTreeController::setSelectionIndexPath(const NSIndexPath &path) { return setSelectionIndexPaths({path}); }

bool NSTreeController::addSelectionIndexPaths(const std::vector<NSIndexPath> &paths) {
    NSTreeNodes nodes = selected_;
    for (const NSIndexPath &path : paths)
        nodes.push_back(root_->descendantNodeAtIndexPath(path));
    return setSelectedNodes(std::move(nodes));
}

bool NSTreeController::removeSelectionIndexPaths(const std::vector<NSIndexPath> &paths) {
    std::unordered_set<std::shared_ptr<NSTreeNode>> gone;
    for (const NSIndexPath &path : paths)
        gone.insert(root_->descendantNodeAtIndexPath(path));
    NSTreeNodes nodes = selected_;
    std::erase_if(nodes, [&gone](const auto &node) { return gone.contains(node); });
    return setSelectedNodes(std::move(nodes));
}

std::shared_ptr<NSTreeNode> NSTreeController::nodeNear(const NSIndexPath &path) const {
    const auto parent = root_->descendantNodeAtIndexPath(path.indexPathByRemovingLastIndex());
    if (!parent)
        return root_->childAtIndex(0);
    if (const std::size_t count = parent->childCount(); count > 0)
        return parent->childAtIndex(std::min(path.lastIndex(), count - 1));
    return parent == root_ ? nullptr : parent;
}

// ---------------------------------------------------------------- inserting, removing, moving

void NSTreeController::insertObject_atArrangedObjectIndexPath(id object, const NSIndexPath &path) {
    const auto parent = path.isEmpty() ? nullptr : root_->descendantNodeAtIndexPath(path.indexPathByRemovingLastIndex());
    const auto list = parent && object ? listOf(*parent) : nullptr;
    if (!list)
        return;
    const std::size_t before = parent->childCount();
    list->insertObject_atIndex(object, path.lastIndex());
    const bool changed = syncBelow(*parent);
    const auto isNew = [&object](const auto &child) { return child->representedObject_ == object; };
    const auto found = std::find_if(parent->children_.rbegin(), parent->children_.rend(), isNew);
    const auto node = found == parent->children_.rend() ? nullptr : *found;
    TreeChange change;
    if (node && parent->childCount() == before + 1)
        change = {TreeChange::Kind::inserted, {node->indexPath()}};
    finishChange(change, changed, {0}, selectsInsertedObjects_ && node ? NSTreeNodes{node} : selected_);
}

// All at once: one by one each would move all its siblings.
void NSTreeController::removeChildren(NSTreeNode &parent, const NSTreeNodes &nodes) {
    const auto list = listOf(parent);
    if (!list)
        return;
    NSMutableIndexSet places;
    NSArray::Items elsewhere;   // where the nodes are sorted, the objects stand in another order
    std::unordered_set<std::shared_ptr<NSTreeNode>> gone;
    for (const auto &node : nodes) {
        if (list->objectAtIndex(node->position_) == node->representedObject_)
            places.addIndex(node->position_);
        else
            elsewhere.push_back(node->representedObject_);
        gone.insert(node);
    }
    list->removeObjectsAtIndexes(places);
    if (!elsewhere.empty())
        list->removeObjectsIdenticalIn(std::move(elsewhere));
    NSTreeNodes rest = parent.childNodes();
    std::erase_if(rest, [&gone](const auto &child) { return gone.contains(child); });
    parent.adopt(std::move(rest));
}

void NSTreeController::removeObjectAtArrangedObjectIndexPath(const NSIndexPath &path) { removeObjectsAtArrangedObjectIndexPaths({path}); }

void NSTreeController::removeObjectsAtArrangedObjectIndexPaths(const std::vector<NSIndexPath> &paths) {
    NSTreeNodes nodes;
    for (const NSIndexPath &path : paths)
        nodes.push_back(root_->descendantNodeAtIndexPath(path));
    nodes = inOrder(nodes);
    if (nodes.empty())
        return;
    TreeChange change{TreeChange::Kind::removed, {}};
    for (const auto &node : nodes)
        change.paths.push_back(node->indexPath());
    std::unordered_map<std::shared_ptr<NSTreeNode>, NSTreeNodes> byParent;
    for (const auto &node : nodes)
        byParent[node->parentNode()].push_back(node);
    for (const auto &[parent, children] : byParent)
        removeChildren(*parent, children);
    finishChange(change, true, change.paths.front(), selected_);
}

void NSTreeController::remove(const id &) { removeObjectsAtArrangedObjectIndexPaths(selectionIndexPaths()); }

void NSTreeController::insertNode(NSTreeNode &parent, const std::shared_ptr<NSTreeNode> &node, std::size_t index) {
    const auto list = listOf(parent);
    if (!list)
        return;
    NSTreeNodes children = parent.childNodes();
    list->insertObject_atIndex(node->representedObject_, index);
    children.insert(children.begin() + static_cast<std::ptrdiff_t>(std::min(index, children.size())), node);
    parent.adopt(std::move(children));
}

void NSTreeController::moveNode_toIndexPath(const std::shared_ptr<NSTreeNode> &node, const NSIndexPath &path) {
    moveNodes_toIndexPath({node}, path);
}

void NSTreeController::moveNodes_toIndexPath(const NSTreeNodes &nodes, const NSIndexPath &path) {
    const auto parent = path.isEmpty() ? nullptr : root_->descendantNodeAtIndexPath(path.indexPathByRemovingLastIndex());
    if (!parent || !listOf(*parent))
        return;
    bool moved = false;
    std::size_t index = path.lastIndex();
    for (const auto &node : inOrder(nodes)) {
        bool underItself = false;
        for (auto above = parent; above; above = above->parentNode())
            underItself |= above == node;
        if (underItself)
            continue;
        if (const auto old = node->parentNode())
            removeChildren(*old, {node});
        insertNode(*parent, node, index++);
        moved = true;
    }
    if (!moved)
        return;
    syncBelow(*parent);
    finishChange({}, true, {0}, selected_);
}

// ---------------------------------------------------------------- telling

void NSTreeController::finishChange(const TreeChange &change, bool treeChanged, const NSIndexPath &near, NSTreeNodes selection) {
    selection = inOrder(selection);
    if (selection.empty() && avoidsEmptySelection_ && treeChanged)
        if (auto node = nodeNear(near))
            selection.push_back(std::move(node));
    const bool selectionChanged = takeSelection(std::move(selection));
    observers_.tell([&](auto &observer) { observer.arrangedNodesDidChange(*this, change); });
    if (selectionChanged)
        tellSelection();
}

void NSTreeController::tellSelection() {
    observers_.tell([&](auto &observer) { observer.selectionIndexPathsDidChange(*this); });
}

// ---------------------------------------------------------------- checking

std::string NSTreeController::toString() const {
    std::string text = "(";
    walk(
        root_,
        [&text](const std::shared_ptr<NSTreeNode> &node) {
            const bool hasChildren = node->childCount() > 0;
            if (text.back() != '(')
                text += ' ';
            text += node->representedObject_->valueForKey("name").description().str();
            if (hasChildren)
                text += " (";
            return true;
        },
        [&text](const std::shared_ptr<NSTreeNode> &node) {
            if (node->childCount() > 0)
                text += ')';
        });
    text += ") selection";
    for (const auto &node : selected_)
        text += " " + node->indexPath().toString();
    return text;
}

bool NSTreeController::isConsistent() const {
    bool good = true;
    std::unordered_map<NSTreeNode *, std::size_t> place;
    walk(
        root_,
        [&](const std::shared_ptr<NSTreeNode> &node) {
            const auto parent = node->parentNode();
            good = good && node->inTree_ && parent && parent->childAtIndex(node->position_) == node;
            place.emplace(node.get(), place.size());
            return true;
        },
        [](const std::shared_ptr<NSTreeNode> &) {});
    for (std::size_t i = 0; i < selected_.size() && good; ++i) {
        const auto here = place.find(selected_[i].get());
        good = here != place.end() && (i == 0 || place.at(selected_[i - 1].get()) < here->second);
    }
    return good;
}

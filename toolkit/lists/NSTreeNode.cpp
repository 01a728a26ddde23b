#include "toolkit/lists/NSTreeNode.h"

#include <algorithm>
#include <utility>

HN_CLASS_TABLE(NSTreeNode, NSObjectTable,
    .key("representedObject", &NSTreeNode::representedObject_)
    .key("childNodes", [](NSObject &o) { return Value(Value::List(NSArray::of(static_cast<NSTreeNode &>(o).children()))); })
    .key("parentNode", &NSTreeNode::parentNode)
    .key("isLeaf", &NSTreeNode::isLeaf))

NSTreeNode::~NSTreeNode() {
    if (children_.empty())
        return;
    NSArray::Items ending(std::make_move_iterator(children_.begin()), std::make_move_iterator(children_.end()));
    ending.push_back(std::move(representedObject_));
    lists::drop(std::move(ending));
}

const NSTreeNodes &NSTreeNode::children() const {
    if (isUnmade_)
        if (const auto owner = owner_.lock())
            owner->makeChildNodes(const_cast<NSTreeNode &>(*this));   // what is asked for does not change by being made late
    return children_;
}

std::shared_ptr<NSTreeNode> NSTreeNode::childAtIndex(std::size_t index) const {
    return index < childCount() ? children_[index] : nullptr;
}

NSIndexPath NSTreeNode::indexPath() const {
    std::vector<std::size_t> path;
    const NSTreeNode *node = this;
    for (std::shared_ptr<NSTreeNode> parent = parentNode(); parent; parent = parent->parentNode()) {
        path.push_back(node->position_);
        node = parent.get();
    }
    std::reverse(path.begin(), path.end());
    return NSIndexPath(std::move(path));
}

bool NSTreeNode::isLeaf() const { return leaf_ == Leaf::unknown ? children().empty() : leaf_ == Leaf::yes; }

std::shared_ptr<NSTreeNode> NSTreeNode::descendantNodeAtIndexPath(const NSIndexPath &path) {
    std::shared_ptr<NSTreeNode> node = selfOf(this);
    for (const std::size_t index : path.indexes())
        if (!node || !(node = node->childAtIndex(index)))
            return nullptr;
    return node;
}

void NSTreeNode::mark(const NSTreeNodes nodes, bool inTree) {
    std::vector<const NSTreeNodes *> open{&nodes};
    while (!open.empty()) {
        const NSTreeNodes &level = *open.back();
        open.pop_back();
        for (const auto &node : level) {
            node->inTree_ = inTree;
            if (!node->children_.empty())
                open.push_back(&node->children_);
        }
    }
}

void NSTreeNode::adopt(NSTreeNodes children) {
    isUnmade_ = false;
    NSTreeNodes old = std::exchange(children_, std::move(children));
    for (const auto &child : old)
        if (child->parent_.lock().get() == this)
            child->parent_.reset();
    NSTreeNodes come;
    const std::weak_ptr<NSTreeNode> self = weakOf(this);
    for (std::size_t i = 0; i < children_.size(); ++i) {
        NSTreeNode &child = *children_[i];
        child.parent_ = self;
        child.position_ = i;
        if (child.inTree_ != inTree_)
            come.push_back(children_[i]);
    }
    mark(std::move(come), inTree_);
    std::erase_if(old, [](const auto &child) { return !child->parent_.expired(); });
    mark(old, false);
    lists::drop(NSArray::Items(std::make_move_iterator(old.begin()), std::make_move_iterator(old.end())));
}

void NSTreeNode::change(NSTreeNodes children) {
    if (const auto owner = owner_.lock())
        owner->setChildNodes(*this, std::move(children));
    else
        adopt(std::move(children));
}

// ---------------------------------------------------------------- MutableChildNodes

std::size_t NSTreeNode::MutableChildNodes::count() const { return node_->childCount(); }
std::shared_ptr<NSTreeNode> NSTreeNode::MutableChildNodes::objectAtIndex(std::size_t index) const { return node_->childAtIndex(index); }
void NSTreeNode::MutableChildNodes::addObject(const std::shared_ptr<NSTreeNode> &child) { insertObject_atIndex(child, count()); }

void NSTreeNode::MutableChildNodes::insertObject_atIndex(const std::shared_ptr<NSTreeNode> &child, std::size_t index) {
    if (!child)
        return;
    NSTreeNodes children = node_->childNodes();
    children.insert(children.begin() + static_cast<std::ptrdiff_t>(std::min(index, children.size())), child);
    node_->change(std::move(children));
}

void NSTreeNode::MutableChildNodes::removeObject(const std::shared_ptr<NSTreeNode> &child) {
    NSTreeNodes children = node_->childNodes();
    if (std::erase(children, child) > 0)
        node_->change(std::move(children));
}

void NSTreeNode::MutableChildNodes::removeObjectAtIndex(std::size_t index) {
    NSTreeNodes children = node_->childNodes();
    if (index >= children.size())
        return;
    children.erase(children.begin() + static_cast<std::ptrdiff_t>(index));
    node_->change(std::move(children));
}

void NSTreeNode::MutableChildNodes::removeAllObjects() { node_->change({}); }

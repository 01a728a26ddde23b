// A node that a tree controller makes for each object of its tree, or one that stands alone.
//
// Children  `childNodes` is a copy; `mutableChildNodes` changes them, and with them the objects' own lists where the node
//           belongs to a tree controller. A controller's nodes are made when somebody first asks for them: a large tree
//           costs what of it is looked at.
// Absent    the root of a controller has no represented object and the empty index path.
// Threads   main. A tree of any depth ends without recursion.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/lists/NSArray.h"
#include "toolkit/lists/NSIndexPath.h"

class NSTreeNode;
using NSTreeNodes = std::vector<std::shared_ptr<NSTreeNode>>;

// Who makes the nodes of the objects and keeps the objects' lists in step with them.
class NSTreeNodeOwner {
public:
    virtual ~NSTreeNodeOwner() = default;
    virtual void makeChildNodes(NSTreeNode &node) = 0;
    virtual void setChildNodes(NSTreeNode &node, NSTreeNodes children) = 0;
};

class NSTreeNode : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    HN_DECLARE_CLASS_TABLE

    // The child nodes of a node, to be changed; does nothing once the node has gone.
    class MutableChildNodes {
    public:
        explicit MutableChildNodes(std::shared_ptr<NSTreeNode> node) : node_(std::move(node)) {}
        [[nodiscard]] std::size_t count() const;
        [[nodiscard]] std::shared_ptr<NSTreeNode> objectAtIndex(std::size_t index) const;
        void addObject(const std::shared_ptr<NSTreeNode> &child);
        void insertObject_atIndex(const std::shared_ptr<NSTreeNode> &child, std::size_t index);
        void removeObject(const std::shared_ptr<NSTreeNode> &child);
        void removeObjectAtIndex(std::size_t index);
        void removeAllObjects();

    private:
        std::shared_ptr<NSTreeNode> node_;
    };

    ~NSTreeNode() override;
    using NSObject::init;
    void init(id representedObject) { representedObject_ = std::move(representedObject); }
    [[nodiscard]] static std::shared_ptr<NSTreeNode> treeNodeWithRepresentedObject(id object) { return make<NSTreeNode>(std::move(object)); }

    [[nodiscard]] const id &representedObject() const { return representedObject_; }
    template <class T> [[nodiscard]] std::shared_ptr<T> represented() const { return std::dynamic_pointer_cast<T>(representedObject_); }
    [[nodiscard]] NSTreeNodes childNodes() const { return children(); }
    [[nodiscard]] std::size_t childCount() const { return children().size(); }
    [[nodiscard]] std::shared_ptr<NSTreeNode> childAtIndex(std::size_t index) const;
    [[nodiscard]] MutableChildNodes mutableChildNodes() { return MutableChildNodes(selfOf(this)); }
    [[nodiscard]] std::shared_ptr<NSTreeNode> parentNode() const { return parent_.lock(); }
    [[nodiscard]] NSIndexPath indexPath() const;
    // By the controller's leaf key path where it has one; else whether there are no children.
    [[nodiscard]] bool isLeaf() const;
    // Null where the path leaves the tree; the node itself for the empty path.
    [[nodiscard]] std::shared_ptr<NSTreeNode> descendantNodeAtIndexPath(const NSIndexPath &path);
    // True while the node hangs in its controller's tree.
    [[nodiscard]] bool isInTree() const { return inTree_; }

private:
    friend class NSTreeController;
    // Makes them where that was not done yet.
    [[nodiscard]] const NSTreeNodes &children() const;
    // Takes these children; those that left are no longer in the tree.
    void adopt(NSTreeNodes children);
    void change(NSTreeNodes children);
    static void mark(NSTreeNodes nodes, bool inTree);

    id representedObject_;
    NSTreeNodes children_;
    std::weak_ptr<NSTreeNode> parent_;
    std::size_t position_ = 0;
    bool inTree_ = false;
    bool isUnmade_ = false;   // nobody has asked for the children yet: children_ is empty whatever the object holds
    enum class Leaf { unknown, yes, no } leaf_ = Leaf::unknown;
    std::weak_ptr<NSTreeNodeOwner> owner_;
};

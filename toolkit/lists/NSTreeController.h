// Stands between a tree of objects and its outline: the nodes and the selection.
//
// Content    a shared NSMutableArray of the top-level objects; each object gives its children under childrenKeyPath (an
//            NSMutableArray or a list) and, under leafKeyPath, whether it is a leaf; a leaf's children are not asked for.
//            The controller's own operations change these lists and the nodes at once; whoever changes them directly
//            calls rearrangeObjects afterwards. An object that stands among its own ancestors is left out.
// Nodes      rearrangeObjects keeps the node of each object that is still a child of the same parent, so that an
//            outline's open folders stay open. The nodes below a node are made when first asked for, from what the object's
//            list holds then.
// Selection  nodes, in the order in which the outline shows them. The selection loses nodes that leave the tree. A
//            controller that avoids an empty selection selects a node whenever its tree changes and nothing is selected:
//            after a removal what now stands at the first removed place (its last sibling, its parent), else the first
//            node. An explicit clearing stays empty until the tree changes.
// Notices    as of NSArrayController: rows first, then the selection where it changed.
// Flags      avoidsEmptySelection on, preservesSelection on, selectsInsertedObjects on.
// Threads    main. No walk recurses.
#pragma once

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/lists/ControllerObservers.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/lists/NSSortDescriptor.h"
#include "toolkit/lists/NSTreeNode.h"

class NSTreeController;

struct TreeChange {
    enum class Kind {
        inserted,     // `paths` count after the change
        removed,      // `paths` count before the change
        rearranged,   // any node may have come, gone or moved; `paths` is empty
    };
    Kind kind = Kind::rearranged;
    std::vector<NSIndexPath> paths;
};

class NSTreeControllerObserver {
public:
    virtual ~NSTreeControllerObserver() = default;
    virtual void arrangedNodesDidChange(NSTreeController &, const TreeChange &) {}
    virtual void selectionIndexPathsDidChange(NSTreeController &) {}
};

class NSTreeController : public NSObject, public NSTreeNodeOwner {
public:
    HN_DECLARE_CLASS_TABLE

    void init() override;

    [[nodiscard]] const NSString &childrenKeyPath() const { return childrenKeyPath_; }
    void setChildrenKeyPath(NSString path) { childrenKeyPath_ = std::move(path); }
    [[nodiscard]] const NSString &leafKeyPath() const { return leafKeyPath_; }
    void setLeafKeyPath(NSString path) { leafKeyPath_ = std::move(path); }

    [[nodiscard]] const std::shared_ptr<NSMutableArray> &content() const { return content_; }
    void setContent(std::shared_ptr<NSMutableArray> content);
    // The root: its child nodes are the top-level ones.
    [[nodiscard]] const std::shared_ptr<NSTreeNode> &arrangedObjects() const { return root_; }
    void rearrangeObjects();
    [[nodiscard]] const NSSortDescriptors &sortDescriptors() const { return sortDescriptors_; }
    void setSortDescriptors(NSSortDescriptors descriptors);

    [[nodiscard]] const NSTreeNodes &selectedNodes() const { return selected_; }
    [[nodiscard]] NSArray selectedObjects() const;
    // The empty path without a selection.
    [[nodiscard]] NSIndexPath selectionIndexPath() const;
    [[nodiscard]] std::vector<NSIndexPath> selectionIndexPaths() const;
    // Paths that lead nowhere are left out; the empty path and an empty list clear. True where the selection changed; the
    // observers are told in any case, so that an outline that hid the row meanwhile selects it again.
    bool setSelectionIndexPath(const NSIndexPath &path);
    bool setSelectionIndexPaths(const std::vector<NSIndexPath> &paths);
    bool setSelectedNodes(NSTreeNodes nodes);
    bool addSelectionIndexPaths(const std::vector<NSIndexPath> &paths);
    bool removeSelectionIndexPaths(const std::vector<NSIndexPath> &paths);

    // Does nothing where the path's parent is not there; an index beyond the parent's children appends.
    void insertObject_atArrangedObjectIndexPath(id object, const NSIndexPath &path);
    void removeObjectAtArrangedObjectIndexPath(const NSIndexPath &path);
    void removeObjectsAtArrangedObjectIndexPaths(const std::vector<NSIndexPath> &paths);
    // Removes the selected objects.
    void remove(const id &sender = {});
    // The last index of `path` counts among the new parent's children without the moved node. Does nothing where the
    // node would come under itself.
    void moveNode_toIndexPath(const std::shared_ptr<NSTreeNode> &node, const NSIndexPath &path);
    void moveNodes_toIndexPath(const NSTreeNodes &nodes, const NSIndexPath &path);

    [[nodiscard]] bool avoidsEmptySelection() const { return avoidsEmptySelection_; }
    void setAvoidsEmptySelection(bool flag) { avoidsEmptySelection_ = flag; }
    [[nodiscard]] bool preservesSelection() const { return preservesSelection_; }
    void setPreservesSelection(bool flag) { preservesSelection_ = flag; }
    [[nodiscard]] bool selectsInsertedObjects() const { return selectsInsertedObjects_; }
    void setSelectsInsertedObjects(bool flag) { selectsInsertedObjects_ = flag; }

    void addObserver(const std::shared_ptr<NSTreeControllerObserver> &observer) { observers_.add(observer); }
    void removeObserver(const NSTreeControllerObserver *observer) { observers_.remove(observer); }

    // "(a (b c)) selection 0.1": represented objects by their "name" key where they have one.
    [[nodiscard]] std::string toString() const;
    // Every node knows its parent and place, the selection lies in the tree and in order.
    [[nodiscard]] bool isConsistent() const;

private:
    class LeafKey;
    template <class Enter, class Leave> static void walk(const std::shared_ptr<NSTreeNode> &top, Enter &&enter, Leave &&leave);
    void makeChildNodes(NSTreeNode &node) override;
    void setChildNodes(NSTreeNode &node, NSTreeNodes children) override;
    [[nodiscard]] NSArray childObjectsOf(const NSTreeNode &node) const;
    [[nodiscard]] std::shared_ptr<NSMutableArray> listOf(const NSTreeNode &node) const;
    using Objects = std::unordered_multiset<NSObject *>;
    [[nodiscard]] Objects pathTo(NSTreeNode &node) const;
    // Brings the nodes made so far below in step with their objects; true where a node came, went or moved.
    bool syncBelow(NSTreeNode &top);
    bool syncChildren(NSTreeNode &node, const Objects &onPath, LeafKey &leafKey);
    void finishChange(const TreeChange &change, bool treeChanged, const NSIndexPath &near, NSTreeNodes selection);
    [[nodiscard]] std::shared_ptr<NSTreeNode> nodeNear(const NSIndexPath &path) const;
    // Those of the nodes that hang in the tree, in the order of the outline.
    [[nodiscard]] NSTreeNodes inOrder(const NSTreeNodes &nodes) const;
    bool takeSelection(NSTreeNodes nodes);
    void insertNode(NSTreeNode &parent, const std::shared_ptr<NSTreeNode> &node, std::size_t index);
    // `nodes` are children of `parent`, by place.
    void removeChildren(NSTreeNode &parent, const NSTreeNodes &nodes);
    void tellSelection();

    std::shared_ptr<NSMutableArray> content_;
    std::shared_ptr<NSTreeNode> root_;
    NSString childrenKeyPath_{"children"};
    NSString leafKeyPath_;
    NSSortDescriptors sortDescriptors_;
    NSTreeNodes selected_;
    bool avoidsEmptySelection_ = true;
    bool preservesSelection_ = true;
    bool selectsInsertedObjects_ = true;
    ControllerObservers<NSTreeControllerObserver> observers_;
};

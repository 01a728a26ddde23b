// A node of tree-shaped content: its children and whether it is a leaf. A node holds its children; nobody links back.
// Ending a node of any depth does not recurse. Threads: as the list of children; isLeaf belongs to one thread.
#pragma once

#include "toolkit/lists/NSMutableArray.h"

class RVOutlineBaseNode : public NSObject {
public:
    RVOutlineBaseNode();

    // Never null.
    [[nodiscard]] const std::shared_ptr<NSMutableArray> &children() const { return children_; }
    // Null empties.
    void setChildren(std::shared_ptr<NSMutableArray> children);
    [[nodiscard]] bool isLeaf() const { return isLeaf_; }
    void setIsLeaf(bool leaf) { isLeaf_ = leaf; }
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSMutableArray> children_;
    bool isLeaf_ = false;
};

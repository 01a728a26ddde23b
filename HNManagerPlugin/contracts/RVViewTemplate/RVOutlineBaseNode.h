// A node of tree-shaped content: its children and whether it is a leaf. A node holds its children; nobody links back.
// Ending a node of any depth does not recurse. Threads: as the list of children; isLeaf belongs to one thread.
#pragma once

#include <atomic>
#include <mutex>

#include "toolkit/lists/NSMutableArray.h"

class RVOutlineBaseNode : public NSObject {
public:
    // Never null; made when first asked for, as most nodes of a large tree are leaves.
    [[nodiscard]] const std::shared_ptr<NSMutableArray> &children() const;
    // The same as whether children() is not empty, without making the list.
    [[nodiscard]] bool hasChildren() const { return hasList_ && !children()->isEmpty(); }
    // Null empties.
    void setChildren(std::shared_ptr<NSMutableArray> list);
    [[nodiscard]] bool isLeaf() const { return isLeaf_; }
    void setIsLeaf(bool leaf) { isLeaf_ = leaf; }
    HN_DECLARE_CLASS_TABLE

private:
    mutable std::once_flag made_;
    mutable std::atomic<bool> hasList_ = false;
    mutable std::shared_ptr<NSMutableArray> children_;
    bool isLeaf_ = false;
};

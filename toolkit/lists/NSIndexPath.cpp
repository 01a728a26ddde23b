#include "toolkit/lists/NSIndexPath.h"

#include "toolkit/lists/NSIndexSet.h"

std::size_t NSIndexPath::indexAtPosition(std::size_t position) const {
    return position < indexes_.size() ? indexes_[position] : NSNotFound;
}

std::size_t NSIndexPath::lastIndex() const { return indexes_.empty() ? NSNotFound : indexes_.back(); }

NSIndexPath NSIndexPath::indexPathByAddingIndex(std::size_t index) const {
    NSIndexPath path = *this;
    path.indexes_.push_back(index);
    return path;
}

NSIndexPath NSIndexPath::indexPathByRemovingLastIndex() const {
    NSIndexPath path = *this;
    if (!path.indexes_.empty())
        path.indexes_.pop_back();
    return path;
}

std::string NSIndexPath::toString() const {
    std::string text;
    for (const std::size_t index : indexes_)
        text += (text.empty() ? "" : ".") + std::to_string(index);
    return text;
}

// The tree of bookmarks: made out of the device's flat list, walked, and searched.
//
// Parents   the first nested item (one that has a parentKey, an empty one too) whose pKey is the item's parentKey, else the
//           first top-level one. An item has one parent at most; who has none, or hangs in a ring, is left out.
// Order     children stand in the order of the list.
// Cost      one index instead of a look through the list per item. No walk recurses.
// Threads   any, one at a time per tree.
#pragma once

#include <functional>
#include <vector>

#include "HNManagerPlugin/Classes/SubViews/BookMarks/ViewModel/HNBookMarkEntity.h"

namespace bookmarks {

using Node = std::shared_ptr<HNBookMarkEntity>;
using Nodes = std::vector<Node>;

// The nodes of a list of objects.
[[nodiscard]] Nodes nodesOf(const NSArray &objects);
// Makes the item a child of the first entry of `folder` whose pKey is the item's parentKey. False where there is none.
bool addLeafToFolder(const Node &item, const Nodes &folder);
// The top-level items, with all that hangs below them. `keysAreUnique` gets whether no two items have the same pKey.
[[nodiscard]] Nodes synthesize(const Nodes &flat, bool *keysAreUnique = nullptr);

// The nodes from `top` down, parents first, each below its parent. `visit` gives false where the children stay out.
void walk(const NSArray &top, const std::function<bool(const Node &node, std::size_t level)> &visit);
// Leaves below a list of nodes; all nodes.
[[nodiscard]] std::int64_t leavesBelow(const NSArray &children);
[[nodiscard]] std::int64_t nodesBelow(const NSArray &children);

struct Hits {
    Nodes found;   // copies of the hits, behind them copies of the folders above each
    Nodes tree;    // what `synthesize` makes of them
};
// Copies of all nodes whose name, or below the top level whose address, contains the text, ignoring case, in the order of
// the tree, and behind them copies of the folders above each. A pKey stands in the list once.
// `copyOf` makes a copy without children. A folder above is the tree's first one that has the parentKey as its pKey; where
// all keys differ (`keysAreUnique`) that is the node's own parent, and no key is looked up.
[[nodiscard]] Hits search(const NSArray &top, const NSString &text, bool keysAreUnique,
                          const std::function<Node(const HNBookMarkEntity &)> &copyOf);

}   // namespace bookmarks

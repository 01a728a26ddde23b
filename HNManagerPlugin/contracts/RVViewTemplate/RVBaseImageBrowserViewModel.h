// The data-source side of the image browser: the items, their groups, the selection. Base of all view models.
//
// Items      the object under the key "contents" of the subclass's class table, a shared NSMutableArray.
// Groups     runs of neighbours with the same groupTitle (RVImageBrowserModelDelegate), as the list is sorted; only in the
//            grouped style.
// Selection  rows of the items; those out of range are kept until the next reload of the browser, which drops them.
// Threads    main, except init.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "toolkit/NSObject.h"
#include "toolkit/lists/NSArray.h"
#include "toolkit/lists/NSIndexSet.h"
#include "toolkit/lists/NSSortDescriptor.h"

// Items first..first+count-1 stand below one title.
struct RVImageBrowserGroup {
    NSString title;
    NSRange range;
    bool operator==(const RVImageBrowserGroup &) const = default;
};

class RVBaseImageBrowserViewModel : public NSObject {
public:
    static constexpr std::int64_t kFlat = 0, kGrouped = 1;

    [[nodiscard]] const NSIndexSet &selectionIndexes() const { return selectionIndexes_; }
    // Absent and empty both clear. Tells the observers where the set differs.
    void setSelectionIndexes(const std::optional<NSIndexSet> &indexes);
    // 1 grouped, 0 flat. The browser follows at its next reload.
    [[nodiscard]] std::int64_t browserStyle() const { return browserStyle_; }
    void setBrowserStyle(std::int64_t style) { browserStyle_ = style; }
    // How groups are ordered; key nil, the comparator gets two group titles. Absent until it is set.
    [[nodiscard]] const std::optional<NSSortDescriptor> &groupDescriptor() const { return groupDescriptor_; }
    void setGroupDescriptor(std::optional<NSSortDescriptor> descriptor) { groupDescriptor_ = std::move(descriptor); }

    // A snapshot, in display order; empty where the subclass has no "contents".
    [[nodiscard]] NSArray browserItems();
    // In display order, without gaps; empty in the flat style and where items have no titles.
    [[nodiscard]] std::vector<RVImageBrowserGroup> browserGroups();

    // Told after each change of the selection, as long as `owner` lives.
    void observeSelection(const std::shared_ptr<void> &owner, std::function<void()> observer);
    HN_DECLARE_CLASS_TABLE

private:
    struct Observer {
        std::weak_ptr<void> owner;
        std::function<void()> call;
    };
    NSIndexSet selectionIndexes_;
    std::int64_t browserStyle_ = kFlat;
    std::optional<NSSortDescriptor> groupDescriptor_;
    std::vector<Observer> observers_;
};

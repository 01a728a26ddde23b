#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseImageBrowserViewModel.h"

#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserModelDelegate.h"
#include "toolkit/lists/NSMutableArray.h"

HN_CLASS_TABLE(RVBaseImageBrowserViewModel, NSObjectTable,
    .key("browserStyle", [](NSObject &o) { return Value(static_cast<RVBaseImageBrowserViewModel &>(o).browserStyle()); },
         [](NSObject &o, const Value &v) { static_cast<RVBaseImageBrowserViewModel &>(o).setBrowserStyle(v.integerValue()); })
    .key("selectionIndexes",
         [](NSObject &o) { return Value(Value::List(static_cast<RVBaseImageBrowserViewModel &>(o).selectionIndexes())); },
         [](NSObject &o, const Value &v) {
             static_cast<RVBaseImageBrowserViewModel &>(o).setSelectionIndexes(NSIndexSet::fromList(v.list()));
         }))

void RVBaseImageBrowserViewModel::setSelectionIndexes(const std::optional<NSIndexSet> &indexes) {
    NSIndexSet wanted = indexes.value_or(NSIndexSet());
    if (wanted == selectionIndexes_)
        return;
    selectionIndexes_ = std::move(wanted);
    std::erase_if(observers_, [](const Observer &observer) { return observer.owner.expired(); });
    const std::vector<Observer> observers = observers_;
    for (const Observer &observer : observers)
        if (const std::shared_ptr<void> owner = observer.owner.lock())
            observer.call();
}

NSArray RVBaseImageBrowserViewModel::browserItems() {
    const auto contents = std::dynamic_pointer_cast<NSMutableArray>(valueForKey("contents").object());
    return contents ? contents->snapshot() : NSArray();
}

std::vector<RVImageBrowserGroup> RVBaseImageBrowserViewModel::browserGroups() {
    std::vector<RVImageBrowserGroup> groups;
    if (browserStyle_ != kGrouped)
        return groups;
    std::size_t row = 0;
    for (const id &object : browserItems()) {
        auto *item = dynamic_cast<RVImageBrowserModelDelegate *>(object.get());
        const NSString title = item ? item->groupTitle() : NSString();
        if (groups.empty() || groups.back().title != title)
            groups.push_back({title, {row, 0}});
        ++groups.back().range.length;
        ++row;
    }
    if (groups.size() == 1 && groups.front().title.isNil())
        groups.clear();
    return groups;
}

void RVBaseImageBrowserViewModel::observeSelection(const std::shared_ptr<void> &owner, std::function<void()> observer) {
    observers_.push_back({owner, std::move(observer)});
}

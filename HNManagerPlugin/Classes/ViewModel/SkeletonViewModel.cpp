#include "HNManagerPlugin/Classes/ViewModel/SkeletonViewModel.h"

HN_CLASS_TABLE(SkeletonEntity, HNMbaseEntity, .key("identifier", &SkeletonEntity::identifier).key("title", &SkeletonEntity::title))
HN_CLASS_TABLE(SkeletonViewModel, HNMbaseViewModel, )

void SkeletonViewModel::reloadData() {
    NSArray::Items rows;
    for (int number = 1; number <= kRows; ++number) {
        auto row = makeRow();
        row->identifier = NSString::stringWithFormat("%d", number);
        row->title = NSString::stringWithFormat("%@ %d", rowWord(), number);
        row->sortKey = row->title;
        rows.push_back(std::move(row));
    }
    contents->setArray(NSArray(rows));
    globalArray->setArray(NSArray(std::move(rows)));
}

bool SkeletonViewModel::searchFileByString(const NSString &text) {
    return searchRows(text, [&text](const id &row) { return static_cast<SkeletonEntity &>(*row).title.containsIgnoringCase(text); });
}

#include "HNManagerPlugin/Classes/SubViews/Notes/ViewModel/HNMNoteViewModel.h"

HN_CLASS_TABLE(HNNoteEntity, HNMbaseEntity, .key("identifier", &HNNoteEntity::identifier).key("title", &HNNoteEntity::title))
HN_CLASS_TABLE(HNMNoteViewModel, HNMbaseViewModel, )

void HNMNoteViewModel::reloadData() {
    NSArray::Items rows;
    for (int number = 1; number <= kRows; ++number) {
        auto row = make<HNNoteEntity>();
        row->identifier = NSString::stringWithFormat("%d", number);
        row->title = NSString::stringWithFormat("Note %d", number);
        row->sortKey = row->title;
        rows.push_back(row);
    }
    contents->setArray(NSArray(rows));
    globalArray->setArray(NSArray(std::move(rows)));
}

bool HNMNoteViewModel::searchFileByString(const NSString &text) {
    return searchRows(text, [&text](const id &row) { return static_cast<HNNoteEntity &>(*row).title.containsIgnoringCase(text); });
}

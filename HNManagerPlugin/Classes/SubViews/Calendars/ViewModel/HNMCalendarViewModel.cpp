#include "HNManagerPlugin/Classes/SubViews/Calendars/ViewModel/HNMCalendarViewModel.h"

HN_CLASS_TABLE(HNCalendarEntity, HNMbaseEntity, .key("identifier", &HNCalendarEntity::identifier).key("title", &HNCalendarEntity::title))
HN_CLASS_TABLE(HNMCalendarViewModel, HNMbaseViewModel, )

void HNMCalendarViewModel::reloadData() {
    NSArray::Items rows;
    for (int number = 1; number <= kRows; ++number) {
        auto row = make<HNCalendarEntity>();
        row->identifier = NSString::stringWithFormat("%d", number);
        row->title = NSString::stringWithFormat("Calendar %d", number);
        row->sortKey = row->title;
        rows.push_back(row);
    }
    contents->setArray(NSArray(rows));
    globalArray->setArray(NSArray(std::move(rows)));
}

bool HNMCalendarViewModel::searchFileByString(const NSString &text) {
    return searchRows(text, [&text](const id &row) { return static_cast<HNCalendarEntity &>(*row).title.containsIgnoringCase(text); });
}

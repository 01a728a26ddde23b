// A row for tests of the list machinery: an identifier, a name, a sort key.
#pragma once

#include "HNManagerPlugin/Classes/ModelEntify/HNMbaseEntity.h"
#include "HNManagerPlugin/Classes/ViewModel/HNMbaseViewModel.h"

class ListRow : public HNMbaseEntity {
public:
    const ClassTable &classTable() const override {
        static const ClassTable table =
            ClassTable("ListRow", &HNMbaseEntity::sharedTable()).key("identifier", &ListRow::identifier).key("name", &ListRow::name);
        return table;
    }
    NSString identifier, name;
    [[nodiscard]] static std::shared_ptr<ListRow> of(const NSString &name) {
        auto row = make<ListRow>();
        row->identifier = "id-" + name.str();
        row->name = name;
        row->sortKey = name;
        return row;
    }
};

// A category's model over fixed names; searched by name.
class ListModel : public HNMbaseViewModel {
public:
    std::vector<NSString> device;   // what a reload reads
    int reloads = 0;
    void reloadData() override {
        ++reloads;
        NSArray::Items rows;
        for (const NSString &name : device)
            rows.push_back(ListRow::of(name));
        contents->setArray(NSArray(rows));
        globalArray->setArray(NSArray(rows));
    }
    bool searchFileByString(const NSString &text) override {
        return searchRows(text, [&](const id &row) { return static_cast<ListRow &>(*row).name.containsIgnoringCase(text); });
    }
    void searchSelectedChanged() override { rememberSelection(); }
};

// The names of rows, joined by blanks.
[[nodiscard]] inline std::string namesOf(const NSArray &rows) {
    std::string text;
    for (const id &row : rows)
        text += (text.empty() ? "" : " ") + row->valueForKey("name").text().str();
    return text;
}

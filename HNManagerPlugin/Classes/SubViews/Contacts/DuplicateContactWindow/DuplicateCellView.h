// A group's cell in the merge window: its contacts below each other, or the one that they become. Threads: main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellViewController.h"
#include "toolkit/tables/NSTableCellView.h"

class DuplicateCellView : public NSTableCellView {
public:
    HN_DECLARE_CLASS_TABLE

    bool merged = false;   // the result's column

    void show(const std::shared_ptr<ContactSection> &section);
    [[nodiscard]] const std::vector<std::shared_ptr<DuplicateCellViewController>> &rows() const { return rows_; }
    void prepareForReuse() override { clear(); }

private:
    void clear();
    void add(const std::shared_ptr<ContactSection> &section, const std::shared_ptr<ContactCellData> &data, double top);
    std::vector<std::shared_ptr<DuplicateCellViewController>> rows_;
};

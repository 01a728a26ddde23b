#include "HNManagerPlugin/Classes/SubViews/Contacts/DuplicateContactWindow/DuplicateCellView.h"

HN_CLASS_TABLE(DuplicateCellView, NSTableCellView)

void DuplicateCellView::clear() {
    for (const auto &row : rows_)
        row->view()->removeFromSuperview();
    rows_.clear();
}

void DuplicateCellView::add(const std::shared_ptr<ContactSection> &section, const std::shared_ptr<ContactCellData> &data,
                            double top) {
    const auto row = make<DuplicateCellViewController>();
    row->show(section, data, merged);
    row->view()->setFrame({0, top, frame().size.width, data->height()});
    row->view()->setAutoresizingMask(NSViewWidthSizable);
    addSubview(row->view());
    rows_.push_back(row);
}

void DuplicateCellView::show(const std::shared_ptr<ContactSection> &section) {
    clear();
    if (merged)
        return add(section, section->mergedCellData, 0);
    double top = 0;
    for (const auto &data : section->cellDatas) {
        add(section, data, top);
        top += data->height();
    }
}

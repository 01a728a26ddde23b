// A table that logs what it asks and tells, and counts the views that it makes.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "tests/toolkit/lists/Item.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSWindow.h"

class TableDelegate : public NSObject, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    std::string log;
    std::int64_t rows = kBoundList;
    std::map<std::int64_t, double> heights;
    int viewsAsked = 0, heightsAsked = 0, cellsMade = 0;
    bool refusesOddRows = false, columnZeroStays = false;
    std::function<void(NSTableView &)> whenViewIsAsked;

    std::string take() { return std::exchange(log, ""); }

    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column, std::int64_t) override {
        ++viewsAsked;
        if (whenViewIsAsked)
            whenViewIsAsked(table);
        if (auto cell = table.makeViewWithIdentifier_owner(column->identifier()))
            return cell;
        ++cellsMade;
        auto cell = make<NSTableCellView>();
        cell->setIdentifier(column->identifier());
        auto field = NSTextField::labelWithString("");
        cell->setTextField(field);
        cell->addSubview(field);
        cell->objectValueDidChange = [](NSTableCellView &view) {
            view.textField()->setStringValue(view.objectValue().isText() ? view.objectValue().text() : view.valueOfObject("name").text());
        };
        return cell;
    }
    double tableView_heightOfRow(NSTableView &table, std::int64_t row) override {
        ++heightsAsked;
        const auto found = heights.find(row);
        return found == heights.end() ? table.rowHeight() : found->second;
    }
    NSIndexSet tableView_selectionIndexesForProposedSelection(NSTableView &table, const NSIndexSet &proposed) override {
        log += "proposed " + proposed.toString() + "\n";
        return NSTableViewDelegate::tableView_selectionIndexesForProposedSelection(table, proposed);
    }
    bool tableView_shouldSelectRow(NSTableView &, std::int64_t row) override { return !refusesOddRows || row % 2 == 0; }
    void tableViewSelectionDidChange(NSTableView &table) override {
        log += "selection " + table.selectedRowIndexes().toString();
        if (const auto controller = table.boundController())
            log += " controller " + controller->selectionIndexes().toString();
        log += "\n";
    }
    void tableView_mouseDownInHeaderOfTableColumn(NSTableView &, const std::shared_ptr<NSTableColumn> &column) override {
        log += "pressed " + column->identifier().str() + "\n";
    }
    void tableView_didClickTableColumn(NSTableView &, const std::shared_ptr<NSTableColumn> &column) override {
        log += "clicked " + column->identifier().str() + "\n";
    }
    bool tableView_shouldReorderColumn_toColumn(NSTableView &, std::int64_t column, std::int64_t to) override {
        log += "reorder " + std::to_string(column) + " " + std::to_string(to) + "\n";
        return !columnZeroStays || (column != 0 && to != 0);
    }
    void tableViewColumnDidMove(NSTableView &, std::int64_t from, std::int64_t to) override {
        log += "moved " + std::to_string(from) + " " + std::to_string(to) + "\n";
    }
    std::int64_t numberOfRowsInTableView(NSTableView &) override { return rows; }
    Value tableView_objectValueForTableColumn_row(NSTableView &, const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override {
        return NSString(column->identifier().str() + std::to_string(row));
    }
    void tableView_sortDescriptorsDidChange(NSTableView &table, const NSSortDescriptors &old) override {
        log += "sort";
        for (const NSSortDescriptor &one : table.sortDescriptors())
            log += " " + one.key().str() + (one.ascending() ? "+" : "-");
        log += " was";
        for (const NSSortDescriptor &one : old)
            log += " " + one.key().str() + (one.ascending() ? "+" : "-");
        log += "\n";
    }
};

// Columns "a" (100 wide), "b" (200 wide); rows of 38 and a gap of 2; 1000 by 600 to see.
class TableFixture : public testing::Test {
protected:
    TableFixture() {
        for (const auto &[identifier, width] : {std::pair("a", 100.0), std::pair("b", 200.0)}) {
            auto column = make<NSTableColumn>(identifier);
            column->setWidth(width);
            column->setSortDescriptorPrototype(NSSortDescriptor(identifier));
            table->addTableColumn(column);
        }
        table->setRowHeight(38);
        table->setAllowsMultipleSelection(true);
        table->setDelegate(delegate);
        table->setDataSource(delegate);
    }
    void setRows(std::int64_t count) {
        delegate->rows = count;
        table->reloadData();
    }
    void bindTo(const NSArray &list) {
        controller->setContent(make<NSMutableArray>(list));
        table->bindToArrayController(controller);
        delegate->take();
    }
    void inScrollView(NSSize size) {
        scroll = make<NSScrollView>(NSRect({0, 0}, size));
        scroll->setDocumentView(table);
    }
    // What stands in a cell; "-" for a row without a view.
    std::string text(std::int64_t column, std::int64_t row) {
        const auto cell = std::dynamic_pointer_cast<NSTableCellView>(table->viewAtColumn_row_makeIfNecessary(column, row, false));
        return cell ? cell->textField()->stringValue().str() : "-";
    }

    std::shared_ptr<TableDelegate> delegate = make<TableDelegate>();
    std::shared_ptr<NSTableView> table = make<NSTableView>();
    std::shared_ptr<NSArrayController> controller = make<NSArrayController>();
    std::shared_ptr<NSScrollView> scroll;
};

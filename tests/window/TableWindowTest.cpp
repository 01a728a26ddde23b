#include <gtest/gtest.h>

#include <QScrollBar>

#include "host/window/ViewSurface.h"
#include "tests/window/WindowWorld.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSTextField.h"

namespace {

constexpr std::int64_t kRows = 100'000;

std::string nameOf(std::int64_t row) {
    static constexpr const char *kFirst[] = {"Ada", "Alan", "Grace", "Edsger", "Barbara", "Donald", "Frances", "Tony"};
    static constexpr const char *kLast[] = {"Lovelace", "Turing", "Hopper", "Dijkstra", "Liskov", "Knuth", "Allen", "Hoare", "Backus"};
    return std::string(kFirst[row % 8]) + " " + kLast[row % 9] + " " + std::to_string(row);
}

// Cells of all the kinds that categories use: a check box that mirrors the row's selection, texts, a button.
class People : public NSObject, public NSTableViewDelegate, public NSTableViewDataSource {
public:
    std::int64_t numberOfRowsInTableView(NSTableView &) override { return kRows; }

    std::shared_ptr<NSTableRowView> tableView_rowViewForRow(NSTableView &table, std::int64_t) override {
        auto row = table.makeView<NSTableRowView>("row");
        if (!row) {
            row = make<NSTableRowView>();
            row->setIdentifier("row");
            row->setSelectedColor(NSColor::colorWithSRGBRed_green_blue_alpha(0.85, 0.95, 0.97, 1));
            row->setHighlightColor(NSColor::colorWithCalibratedWhite_alpha(0.96, 1));
        }
        return row;
    }

    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column, std::int64_t row) override {
        auto cell = table.makeView<NSTableCellView>(column->identifier());
        if (!cell)
            cell = makeCell(column->identifier());
        if (cell->textField())
            cell->textField()->setStringValue(NSString(column->identifier() == NSString("name") ? nameOf(row) : "+49 30 " + std::to_string(100'000 + row)));
        return cell;
    }

    void tableViewSelectionDidChange(NSTableView &table) override { selected = table.selectedRowIndexes(); }
    void onCall() { ++calls; }

    NSIndexSet selected;
    int calls = 0;
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<NSTableCellView> makeCell(const NSString &kind) {
        const auto cell = make<NSTableCellView>(NSRect(0, 0, 100, 28));
        cell->setIdentifier(kind);
        if (kind == NSString("call")) {
            const auto button = make<NSButton>(NSRect(6, 2, 60, 24));
            button->setTitle("Call");
            button->connect(shared_from_this(), "onCall:");
            cell->addSubview(button);
            return cell;
        }
        const auto text = NSTextField::labelWithString("");
        text->setLineBreakMode(LineBreak::truncateTail);
        text->setFrame({8, 6, 84, 17});
        text->setAutoresizingMask(NSViewWidthSizable);
        cell->setTextField(text);
        cell->addSubview(text);
        return cell;
    }
};
HN_CLASS_TABLE(People, NSObjectTable, .selector("onCall:", &People::onCall))

class TableWindow : public testing::Test {
protected:
    void SetUp() override {
        window = make<NSWindow>(NSRect(100, 100, 720, 480), NSTitledWindowMask | NSClosableWindowMask | NSResizableWindowMask);
        window->setTitle("People");
        scroll = make<NSScrollView>(NSRect(0, 0, 720, 480));
        scroll->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
        scroll->setBackgroundColor(NSColor::whiteColor());
        table = make<NSTableView>(NSRect(0, 0, 700, 480));
        table->setRowHeight(28);
        table->setAllowsMultipleSelection(true);
        for (const auto &[identifier, title, width] : {std::tuple{"name", "Name", 300.0}, {"phone", "Phone", 200.0}, {"call", "", 80.0}}) {
            const auto column = make<NSTableColumn>(NSString(identifier));
            column->setTitle(title);
            column->setWidth(width);
            table->addTableColumn(column);
        }
        table->setDelegate(people);
        table->setDataSource(people);
        scroll->setDocumentView(table);
        scroll->setHeaderView(table->headerView());
        window->contentView()->addSubview(scroll);
        table->reloadData();
        surface = &world.show(window);
    }

    NSPoint middleOfRow(std::int64_t row) {
        const NSRect rect = table->rectOfRow(row);
        return {rect.minX() + 100, rect.minY() + rect.size.height / 2};
    }

    WindowWorld world;
    std::shared_ptr<People> people = make<People>();
    std::shared_ptr<NSWindow> window;
    std::shared_ptr<NSScrollView> scroll;
    std::shared_ptr<NSTableView> table;
    host::ViewSurface *surface = nullptr;
};

}  // namespace

TEST_F(TableWindow, showsItsFirstRowsAndMakesViewsForThoseAlone) {
    world.picture(*surface->parentWidget(), "table-100000-light");
    EXPECT_LT(table->numberOfRowViews(), 30u);
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(TableWindow, aClickSelectsARowAndOneWithControlAddsAnother) {
    world.clickAt(*table, middleOfRow(3));
    EXPECT_EQ(people->selected.toString(), "{3}");
    world.clickAt(*table, middleOfRow(6), Qt::ControlModifier);
    EXPECT_EQ(people->selected.toString(), "{3, 6}");
    world.clickAt(*table, middleOfRow(8), Qt::ShiftModifier);
    EXPECT_TRUE(table->isRowSelected(8));
    world.picture(*surface->parentWidget(), "table-100000-selected");
}

TEST_F(TableWindow, theWheelAndTheScrollBarMoveTheSameOffset) {
    world.wheel(*table, -5);
    EXPECT_EQ(scroll->contentOffset().y, 300);
    world.until([&] { return !surface->findChildren<QScrollBar *>().isEmpty(); });
    surface->syncParts();
    QScrollBar *bar = nullptr;
    for (QScrollBar *one : surface->findChildren<QScrollBar *>())
        if (one->isVisible() && one->orientation() == Qt::Vertical)
            bar = one;
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->value(), 300);
    bar->setValue(bar->maximum());
    EXPECT_EQ(table->rowAtPoint({10, scroll->documentVisibleRect().maxY() - 5}), kRows - 1);
    world.clickAt(*table, middleOfRow(kRows - 1));
    EXPECT_EQ(people->selected.toString(), "{99999}");
    EXPECT_TRUE(table->isConsistent());
    world.picture(*surface->parentWidget(), "table-100000-end");
}

TEST_F(TableWindow, aButtonInACellRunsItsActionAndLeavesTheSelection) {
    const auto cell = table->viewAtColumn_row_makeIfNecessary(2, 2, false);
    ASSERT_NE(cell, nullptr);
    world.click(*cell->subviews().front());
    EXPECT_EQ(people->calls, 1);
    EXPECT_EQ(people->selected.toString(), "{}");
}

TEST_F(TableWindow, arrowKeysMoveTheSelectionThroughTheList) {
    world.clickAt(*table, middleOfRow(0));
    for (int i = 0; i < 20; ++i)
        world.key(Qt::Key_Down);
    EXPECT_EQ(people->selected.toString(), "{20}");
    EXPECT_GT(scroll->contentOffset().y, 0);
}

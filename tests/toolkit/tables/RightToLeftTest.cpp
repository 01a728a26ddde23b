// Tables and outlines in a layout from right to left.
#include "tests/toolkit/tables/TableFixture.h"
#include "toolkit/tables/NSOutlineView.h"
#include "toolkit/views/NSApplication.h"

namespace {

class FromTheRight {
public:
    FromTheRight() { NSApp()->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::rightToLeft); }
    ~FromTheRight() { NSApp()->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::leftToRight); }
};

// Columns a (100 and a gap of 3) and b (200 and a gap of 3) in 400: b takes what is left, so it is 294 wide.
class TurnedTable : public TableFixture {
protected:
    TurnedTable() { setRows(20); }
    FromTheRight direction;
};

}  // namespace

TEST_F(TurnedTable, beginsAtTheRightEdge) {
    inScrollView({400, 200});
    EXPECT_EQ(describe(table->rectOfColumn(0)), "[297,0 103x800]");
    EXPECT_EQ(describe(table->rectOfColumn(1)), "[0,0 297x800]");
    const auto cell = table->viewAtColumn_row_makeIfNecessary(0, 0, false);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(describe(cell->convertRect_toView(cell->bounds(), table)), "[298.5,1 100x38]");
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(TurnedTable, aPointFindsTheColumnThatIsThere) {
    inScrollView({400, 200});
    struct {
        double x;
        std::int64_t column;
    } rows[] = {{0, 1}, {296.5, 1}, {297, 0}, {399, 0}, {400.5, -1}};
    for (const auto &[x, column] : rows)
        EXPECT_EQ(table->columnAtX(x), column) << x;
}

TEST_F(TurnedTable, aWideTableShowsItsRightEndAndKeepsWhatIsScrolledTo) {
    table->setColumnAutoresizingStyle(NSTableViewColumnAutoresizingStyle::none);
    inScrollView({200, 200});
    EXPECT_EQ(scroll->contentOffset().x, 106);   // 306 wide
    scroll->scrollToPoint({50, 0});
    scroll->setFrame({0, 0, 180, 200});
    EXPECT_EQ(scroll->contentOffset().x, 70);    // the same 56 points stay hidden at the right
    table->columnAtIndex(0)->setWidth(120);
    EXPECT_EQ(scroll->contentOffset().x, 90);
}

TEST_F(TurnedTable, aCellsPartsStandMirroredAndAreFoundThere) {
    inScrollView({400, 200});
    const auto cell = table->viewAtColumn_row_makeIfNecessary(0, 0, false);
    const auto picture = make<NSView>(NSRect(8, 4, 20, 30));
    cell->addSubview(picture);
    EXPECT_EQ(describe(picture->frame()), "[8,4 20x30]");
    EXPECT_EQ(describe(picture->placeInSuperview()), "[72,4 20x30]");
    EXPECT_EQ(describe(picture->convertRect_toView(picture->bounds(), cell)), "[72,4 20x30]");
    EXPECT_EQ(table->hitTest(table->convertPoint_toView(NSPoint{298.5 + 80, 20}, scroll->contentView())), picture);
    EXPECT_NE(table->hitTest(table->convertPoint_toView(NSPoint{298.5 + 12, 20}, scroll->contentView())), picture);
}

TEST_F(TurnedTable, aColumnsLeftEdgeResizesIt) {
    const auto window = make<NSWindow>(NSRect(0, 0, 400, 200));
    table->setColumnAutoresizingStyle(NSTableViewColumnAutoresizingStyle::none);
    inScrollView({400, 200});
    scroll->setHeaderView(table->headerView());
    window->contentView()->addSubview(scroll);
    const double edge = table->rectOfColumn(0).minX();
    EXPECT_EQ(edge, 297);
    const auto send = [&](NSEventType type, double x) { window->sendEvent(NSEvent::mouse(type, {x, 190}, 1)); };
    send(NSEventType::leftMouseDown, edge);
    send(NSEventType::leftMouseDragged, edge - 30);
    send(NSEventType::leftMouseUp, edge - 30);
    EXPECT_EQ(table->columnAtIndex(0)->width(), 130);
    EXPECT_EQ(table->columnAtIndex(1)->width(), 200);
}

TEST_F(TurnedTable, theMarkOfTheOrderStandsAtTheEndOfTheTitle) {
    inScrollView({400, 200});
    scroll->setHeaderView(table->headerView());
    table->setSortDescriptors({NSSortDescriptor("a", true)});
    RecordingCanvas canvas;
    table->headerView()->display(canvas);
    const std::string painted = canvas.take();   // the column begins at 297 and ends at 400
    EXPECT_NE(painted.find("fillPolygon 301,13.5 309,13.5 305,9.5"), std::string::npos) << painted;
}

TEST_F(TurnedTable, theScrollersRoomIsAtTheLeft) {
    NSScrollView::setScrollerWidth(15);
    inScrollView({400, 200});
    EXPECT_EQ(describe(scroll->contentView()->frame()), "[15,0 385x177]");
    NSScrollView::setScrollerWidth(0);
}

TEST(TurnedOutline, indentsFromTheRightAndItsArrowsTurnRound) {
    const FromTheRight direction;
    const auto tree = make<NSTreeController>();
    const auto outline = make<NSOutlineView>();
    tree->setLeafKeyPath("isLeaf");
    tree->setAvoidsEmptySelection(false);
    tree->content()->addObject(folder("f", {folder("g", {})}));
    tree->rearrangeObjects();
    auto column = make<NSTableColumn>("name");
    column->setWidth(997);
    outline->addTableColumn(column);
    outline->setRowHeight(38);
    outline->bindToTreeController(tree);
    const auto first = outline->itemAtRow(0);
    EXPECT_EQ(describe(outline->frameOfOutlineCellAtRow(0)), "[982.5,1 16x38]");
    EXPECT_EQ(describe(outline->frameOfCellAtColumn_row(0, 0)), "[1.5,1 981x38]");
    outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0), false);
    const auto press = [&](std::uint16_t code) { outline->keyDown(*NSEvent::key(code)); };
    press(keycode::right);
    EXPECT_FALSE(outline->isItemExpanded(first));
    press(keycode::left);
    EXPECT_TRUE(outline->isItemExpanded(first));
    EXPECT_EQ(describe(outline->frameOfOutlineCellAtRow(1)), "[966.5,41 16x38]");
    press(keycode::right);
    EXPECT_FALSE(outline->isItemExpanded(first));
}

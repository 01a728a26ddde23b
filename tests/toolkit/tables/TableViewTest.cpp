#include "toolkit/tables/NSTableView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/toolkit/tables/TableFixture.h"

namespace {

// ---------------------------------------------------------------- tiling

class Tiling : public TableFixture {};

TEST_F(Tiling, makesViewsOnlyForTheRowsThatShowAndUsesThemAgain) {
    setRows(100000);
    EXPECT_EQ(table->numberOfRowViews(), 15u);   // 600 points of 40
    EXPECT_EQ(delegate->cellsMade, 30);
    EXPECT_EQ(delegate->heightsAsked, 15);
    EXPECT_EQ(text(0, 14), "a14");
    EXPECT_EQ(text(0, 15), "-");
    for (double y = 0; y < 40000; y += 200)
        table->scrollToPoint({0, y});
    EXPECT_EQ(table->numberOfRowViews(), 15u);
    EXPECT_LE(delegate->cellsMade, 40);
    EXPECT_EQ(text(1, 995), "b995");
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(Tiling, makesARowThatIsAskedForAndLetsItGoWithTheNextTile) {
    setRows(1000);
    EXPECT_EQ(table->rowViewAtRow_makeIfNecessary(500, false), nullptr);
    const auto view = table->rowViewAtRow_makeIfNecessary(500, true);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->frame(), NSRect(0, 20000, 306, 40));
    EXPECT_EQ(table->rowViewAtRow_makeIfNecessary(500, true), view);
    EXPECT_EQ(table->rowViewAtRow_makeIfNecessary(1000, true), nullptr);
    table->tile();
    EXPECT_EQ(table->rowViewAtRow_makeIfNecessary(500, false), nullptr);
}

TEST_F(Tiling, givesTheRowViewWhileItsCellIsBeingMade) {
    std::int64_t asked = 0;
    delegate->whenViewIsAsked = [&](NSTableView &t) { asked += t.rowViewAtRow_makeIfNecessary(0, true) != nullptr; };
    setRows(1);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(delegate->viewsAsked, 2);
}

TEST_F(Tiling, takesUpWhatTheDelegateChangesMeanwhileAndEndsWhereItDoesSoAtEveryCall) {
    delegate->whenViewIsAsked = [this](NSTableView &t) {
        delegate->whenViewIsAsked = nullptr;
        delegate->rows = 3;
        t.reloadData();
    };
    setRows(10);
    EXPECT_EQ(table->numberOfRows(), 3);
    EXPECT_EQ(table->numberOfRowViews(), 3u);
    EXPECT_TRUE(table->isConsistent());
    delegate->whenViewIsAsked = [](NSTableView &t) { t.reloadData(); };
    setRows(10);
    EXPECT_EQ(table->numberOfRows(), 10);
}

TEST_F(Tiling, followsItsScrollView) {
    inScrollView({306, 223});   // 23 of them for the header
    setRows(100);
    EXPECT_EQ(table->frame().size, (NSSize{306, 4000}));
    EXPECT_EQ(table->numberOfRowViews(), 5u);
    scroll->scrollToPoint({0, 1010});
    EXPECT_EQ(text(0, 25), "a25");
    EXPECT_EQ(text(0, 30), "a30");
    EXPECT_EQ(text(0, 24), "-");
    scroll->setFrame({0, 0, 306, 423});
    EXPECT_EQ(table->numberOfRowViews(), 11u);
    setRows(2);
    EXPECT_EQ(scroll->contentOffset().y, 0);
    EXPECT_EQ(table->numberOfRowViews(), 2u);
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(Tiling, givesTheLastColumnWhatIsLeft) {
    inScrollView({806, 400});
    EXPECT_EQ(table->columnAtIndex(1)->width(), 700);
    table->columnAtIndex(1)->setMaxWidth(300);
    EXPECT_EQ(table->columnAtIndex(1)->width(), 300);
    EXPECT_EQ(table->frame().size.width, 806);
}

TEST_F(Tiling, holdsBackBetweenBeginAndEndOfUpdates) {
    table->beginUpdates();
    setRows(5);
    EXPECT_EQ(table->numberOfRowViews(), 0u);
    table->endUpdates();
    EXPECT_EQ(table->numberOfRowViews(), 5u);
}

TEST_F(Tiling, tellsRowAndColumnOfAViewInACell) {
    setRows(5);
    const auto cell = std::dynamic_pointer_cast<NSTableCellView>(table->viewAtColumn_row_makeIfNecessary(1, 3, false));
    EXPECT_EQ(table->rowForView(cell->textField()), 3);
    EXPECT_EQ(table->columnForView(cell->textField()), 1);
    EXPECT_EQ(table->columnForView(table->rowViewAtRow_makeIfNecessary(3, false)), -1);
    EXPECT_EQ(table->rowForView(table), -1);
    const auto inner = make<NSTableView>();   // a table inside a cell
    inner->addTableColumn(make<NSTableColumn>("a"));
    cell->addSubview(inner);
    EXPECT_EQ(table->rowForView(inner), 3);
    EXPECT_EQ(inner->rowForView(cell->textField()), -1);
}

TEST_F(Tiling, keepsARowWhoseTextIsBeingEdited) {
    const auto window = make<NSWindow>(NSRect(0, 0, 306, 223));
    inScrollView({306, 223});
    window->setContentView(scroll);
    setRows(100);
    const auto cell = std::dynamic_pointer_cast<NSTableCellView>(table->viewAtColumn_row_makeIfNecessary(0, 1, false));
    EXPECT_FALSE(table->editColumn_row(0, 1));   // a label
    cell->textField()->setEditable(true);
    EXPECT_TRUE(table->editColumn_row(0, 1));
    EXPECT_TRUE(cell->textField()->isEditing());
    scroll->scrollToPoint({0, 3000});
    EXPECT_EQ(table->rowForView(cell), 1);
}

// ---------------------------------------------------------------- geometry

TEST_F(Tiling, findsRowAndColumnOfAPoint) {
    setRows(4);
    struct {
        const char *name;
        NSPoint point;
        std::int64_t row, column;
    } rows[] = {   // columns end at 103 and 306, rows at 40, 80, 120, 160
        {"first", {0, 0}, 0, 0}, {"lastPointOfFirst", {102.5, 39.5}, 0, 0}, {"edge", {103, 40}, 1, 1},
        {"last", {305.5, 159.5}, 3, 1}, {"below", {10, 160}, -1, 0}, {"above", {10, -1}, -1, -1},
        {"rightOfTheColumns", {306, 10}, 0, -1}, {"rightOfAll", {1000, 10}, -1, -1}, {"left", {-1, 10}, -1, -1}};
    for (const auto &[name, point, row, column] : rows) {
        EXPECT_EQ(table->rowAtPoint(point), row) << name;
        EXPECT_EQ(table->columnAtPoint(point), column) << name;
    }
}

TEST_F(Tiling, leavesTheGapsOutOfCells) {
    setRows(4);
    EXPECT_EQ(table->frameOfCellAtColumn_row(1, 2), NSRect(104.5, 81, 200, 38));
    EXPECT_EQ(table->rectOfColumn(1), NSRect(103, 0, 203, 160));
    table->columnAtIndex(0)->setHidden(true);
    EXPECT_EQ(table->rectOfColumn(1), NSRect(0, 0, 203, 160));
    EXPECT_EQ(table->viewAtColumn_row_makeIfNecessary(0, 0, true), nullptr);
    EXPECT_EQ(text(1, 0), "b0");
    EXPECT_TRUE(table->frameOfCellAtColumn_row(2, 0).isEmpty());
    EXPECT_TRUE(table->rectOfRow(4).isEmpty());
}

TEST_F(Tiling, asksForHeightsWhenTheyAreNeeded) {
    for (std::int64_t row = 0; row < 100000; row += 2)
        delegate->heights[row] = 198;
    setRows(100000);
    EXPECT_EQ(table->numberOfRowViews(), 5u);   // 200, 40, 200, 40, 200
    EXPECT_EQ(delegate->heightsAsked, 5);
    EXPECT_EQ(table->rectOfRow(3), NSRect(0, 440, 306, 40));
    EXPECT_EQ(table->rowAtPoint({1, 479}), 3);
    EXPECT_EQ(table->rowAtPoint({1, 480}), 4);
    table->scrollRowToVisible(90000);
    EXPECT_LT(delegate->heightsAsked, 60);
    const NSRect rect = table->rectOfRow(90000);
    EXPECT_TRUE(table->viewport().contains(rect.origin) && rect.maxY() <= table->viewport().maxY());
    EXPECT_TRUE(table->isConsistent());
    delegate->heights[90000] = 48;
    table->noteHeightOfRowsWithIndexesChanged({90000});
    EXPECT_EQ(table->rectOfRow(90000).size.height, 50);
}

TEST_F(Tiling, scrollsNoFurtherThanNeeded) {
    setRows(100);
    table->scrollRowToVisible(10);
    EXPECT_EQ(table->viewport().minY(), 0);
    table->scrollRowToVisible(20);
    EXPECT_EQ(table->viewport().minY(), 240);
    table->scrollRowToVisible(3);
    EXPECT_EQ(table->viewport().minY(), 120);
    table->scrollRowToVisible(99);
    EXPECT_EQ(table->viewport().minY(), 3400);
}

TEST(RowHeights, agreesWithAPlainListOverRandomSteps) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    RowHeights heights;
    heights.reset(5, 10);
    std::vector<double> plain(5, 10);
    for (int step = 0; step < 3000; ++step) {
        const std::size_t row = plain.empty() ? 0 : random() % plain.size();
        switch (random() % 3) {
        case 0:
            if (!plain.empty()) {
                plain[row] = static_cast<double>(random() % 30);
                heights.set(row, plain[row]);
            }
            break;
        case 1: {
            const std::size_t at = random() % (plain.size() + 1), count = random() % 4;
            heights.insert(NSIndexSet::indexSetWithIndexesInRange({at, count}));
            plain.insert(plain.begin() + static_cast<std::ptrdiff_t>(at), count, 10);
            break;
        }
        default: {
            const std::size_t count = std::min<std::size_t>(random() % 4, plain.size() - std::min(row, plain.size()));
            heights.remove(NSIndexSet::indexSetWithIndexesInRange({row, count}));
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(row), plain.begin() + static_cast<std::ptrdiff_t>(row + count));
        }
        }
        ASSERT_EQ(heights.count(), plain.size());
        double y = 0;
        for (std::size_t i = 0; i < plain.size(); ++i) {
            ASSERT_EQ(heights.top(i), y) << step << " row " << i;
            if (plain[i] > 0) {
                ASSERT_EQ(heights.rowAt(y), i) << step;
            }
            y += plain[i];
        }
        ASSERT_EQ(heights.rowAt(y), plain.size()) << step;
    }
}

// ---------------------------------------------------------------- columns

class Columns : public TableFixture {};

TEST_F(Columns, turnsTheOrderRoundOnASecondClickOfTheSameHeader) {
    table->headerView()->performClickOnColumn(0);
    table->headerView()->performClickOnColumn(0);
    table->headerView()->performClickOnColumn(1);
    EXPECT_EQ(delegate->take(), "pressed a\nsort a+ was\nclicked a\n"
                                "pressed a\nsort a- was a+\nclicked a\n"
                                "pressed b\nsort b+ a- was a-\nclicked b\n");
    EXPECT_EQ(table->sortIndicatorOfColumn(1), SortIndicator::ascending);
    EXPECT_EQ(table->sortIndicatorOfColumn(0), SortIndicator::none);
    table->columnAtIndex(0)->setSortDescriptorPrototype({});
    table->headerView()->performClickOnColumn(0);
    EXPECT_EQ(delegate->take(), "pressed a\nclicked a\n");
}

struct Gesture {
    const char *name;
    double from, to;
    const char *log, *columns;
};
class HeaderGesture : public TableFixture, public testing::WithParamInterface<Gesture> {};

TEST_P(HeaderGesture, does) {
    auto third = make<NSTableColumn>("c");
    third->setWidth(100);
    table->addTableColumn(third);
    inScrollView({409, 400});   // columns end at 103, 306, 409
    setRows(3);
    delegate->columnZeroStays = true;
    const auto window = make<NSWindow>(NSRect(0, 0, 409, 400));
    window->setContentView(scroll);
    const auto send = [&](NSEventType type, double x) { window->sendEvent(NSEvent::mouse(type, {x, 390})); };
    send(NSEventType::leftMouseDown, GetParam().from);
    if (GetParam().from != GetParam().to)
        send(NSEventType::leftMouseDragged, GetParam().to);
    send(NSEventType::leftMouseUp, GetParam().to);
    std::string order;
    for (const auto &column : table->tableColumns())
        order += column->identifier().str() + std::to_string(static_cast<int>(column->width())) + " ";
    EXPECT_EQ(delegate->take(), GetParam().log);
    EXPECT_EQ(order, GetParam().columns);
    EXPECT_TRUE(table->isConsistent());
    EXPECT_EQ(text(1, 2), table->columnAtIndex(1)->identifier().str() + "2");
}

INSTANTIATE_TEST_SUITE_P(Table, HeaderGesture,
    testing::Values(Gesture{"click", 150, 150, "pressed b\nsort b+ was\nclicked b\n", "a100 b200 c100 "},
                    Gesture{"aTremblingClick", 150, 153, "pressed b\nsort b+ was\nclicked b\n", "a100 b200 c100 "},
                    Gesture{"dragToTheRight", 150, 350, "pressed b\nreorder 1 -1\nreorder 1 2\nmoved 1 2\n", "a100 c100 b200 "},
                    Gesture{"dragInFrontOfTheFirst", 350, 20, "pressed c\nreorder 2 -1\nreorder 2 0\n", "a100 b200 c100 "},
                    Gesture{"dragTheFirst", 50, 350, "pressed a\nreorder 0 -1\n", "a100 b200 c100 "},
                    Gesture{"dragBesideAll", 150, 900, "pressed b\nreorder 1 -1\n", "a100 b200 c100 "},
                    Gesture{"dragAnEdge", 103, 83, "", "a80 b200 c120 "}),
    [](const auto &gesture) { return std::string(gesture.param.name); });

TEST_F(Columns, paintsTitlesAndTheMarkOfTheOrder) {
    table->columnAtIndex(0)->setTitle("Name");
    table->headerView()->setFrame({0, 0, 306, 30});
    table->headerView()->performClickOnColumn(1);
    RecordingCanvas canvas;
    table->headerView()->display(canvas);
    EXPECT_EQ(canvas.take(), "save\nclip [0,0 306x30]\nsave\n"
                             "text \"Name\" [4,4 95x22] left\n"
                             "fillPolygon 294,17 302,17 298,13 #FF808080\n"
                             "restore\nrestore\n");
    EXPECT_EQ(table->headerView()->headerRectOfColumn(1), NSRect(103, 0, 203, 30));
}

// ---------------------------------------------------------------- selection

class Selecting : public TableFixture {
protected:
    void SetUp() override { bindTo(items({"r0", "r1", "r2", "r3", "r4"})); }
};

TEST_F(Selecting, asksOnlyForAPersonsChoice) {
    table->selectRowIndexes_byExtendingSelection({1, 9}, false);
    controller->setSelectionIndexes({1, 3});
    table->performClick(2);
    table->deselectAll();
    table->deselectAll();
    table->selectAll();
    EXPECT_EQ(delegate->take(), "selection {1} controller {1}\n"
                                "selection {1, 3} controller {1, 3}\n"
                                "proposed {2}\nselection {2} controller {2}\n"
                                "selection {} controller {}\n"
                                "selection {0-4} controller {0-4}\n");
    EXPECT_EQ(names(controller->selectedObjects()), "r0 r1 r2 r3 r4");
}

constexpr auto kShift = NSEventModifierFlagShift, kCommand = NSEventModifierFlagCommand;

TEST_F(Selecting, followsThePersonsClicks) {
    const struct {
        const char *name;
        std::int64_t row;   // clicked while row 2 is selected
        NSEventModifierFlags modifiers;
        bool multiple, empty, refusesOdd;
        const char *log;
    } rows[] = {{"plain", 4, 0, true, true, false, "proposed {4}\nselection {4} controller {4}\n"},
                {"same", 2, 0, true, true, false, "proposed {2}\n"},
                {"shiftDown", 4, kShift, true, true, false, "proposed {2-4}\nselection {2-4} controller {2-4}\n"},
                {"shiftUp", 0, kShift, true, true, false, "proposed {0-2}\nselection {0-2} controller {0-2}\n"},
                {"commandAdds", 4, kCommand, true, true, false, "proposed {2, 4}\nselection {2, 4} controller {2, 4}\n"},
                {"commandTakesAway", 2, kCommand, true, true, false, "proposed {}\nselection {} controller {}\n"},
                {"commandNeverEmpties", 2, kCommand, true, false, false, "proposed {}\n"},
                {"emptyArea", -1, 0, true, true, false, "proposed {}\nselection {} controller {}\n"},
                {"emptyAreaNeverEmpties", -1, 0, true, false, false, "proposed {}\n"},
                {"emptyAreaWithCommand", -1, kCommand, true, true, false, ""},
                {"oneAtATimeShift", 4, kShift, false, true, false, "proposed {4}\nselection {4} controller {4}\n"},
                {"oneAtATimeCommand", 4, kCommand, false, true, false, "proposed {4}\nselection {4} controller {4}\n"},
                {"refused", 3, 0, true, true, true, "proposed {3}\n"},
                {"refusedInPart", 4, kShift, true, true, true, "proposed {2-4}\nselection {2, 4} controller {2, 4}\n"},
                {"beyondTheEnd", 5, 0, true, true, false, ""}};
    for (const auto &row : rows) {
        table->setAllowsMultipleSelection(row.multiple);
        table->setAllowsEmptySelection(row.empty);
        delegate->refusesOddRows = row.refusesOdd;
        table->performClick(2);
        delegate->take();
        table->performClick(row.row, 0, row.modifiers);
        EXPECT_EQ(delegate->take(), row.log) << row.name;
    }
}

TEST_F(Selecting, takesTheLastOfSeveralRowsWhereOnlyOneIsAllowed) {
    table->setAllowsMultipleSelection(false);
    table->selectRowIndexes_byExtendingSelection({0}, false);
    table->selectRowIndexes_byExtendingSelection({1}, true);
    EXPECT_EQ(table->selectedRowIndexes().toString(), "{1}");
    table->selectRowIndexes_byExtendingSelection({2, 3}, false);
    EXPECT_EQ(table->selectedRow(), 3);
    table->selectAll();
    EXPECT_EQ(table->selectedRowIndexes().toString(), "{3}");
}

TEST_F(Selecting, movesByKeys) {
    struct Press {
        std::uint16_t key;
        NSEventModifierFlags modifiers;
        const char *selection;
    };
    constexpr Press kPresses[] = {
        {keycode::down, 0, "{0}"}, {keycode::down, 0, "{1}"}, {keycode::down, kShift, "{1-2}"}, {keycode::up, kShift, "{1}"},
        {keycode::up, kShift, "{0-1}"}, {keycode::end, 0, "{4}"}, {keycode::down, 0, "{4}"}, {keycode::home, kShift, "{0-4}"},
        {keycode::pageUp, 0, "{0}"}, {keycode::pageDown, 0, "{4}"}, {keycode::up, 0, "{3}"}, {keycode::a, kCommand, "{0-4}"},
    };
    for (const Press &press : kPresses) {
        table->keyDown(*NSEvent::key(press.key, "", press.modifiers));
        EXPECT_EQ(table->selectedRowIndexes().toString(), press.selection) << "key " << press.key;
    }
}

TEST_F(Selecting, marksTheRowViewsAndWhoMirrorsThem) {
    const auto box = make<NSButton>();
    box->setButtonType(NSButtonType::switchButton);
    table->viewAtColumn_row_makeIfNecessary(0, 1, false)->addSubview(box);
    const auto row = table->rowViewAtRow_makeIfNecessary(1, false);
    table->selectRowIndexes_byExtendingSelection({1}, false);
    row->observeSelected(box, [weak = std::weak_ptr(box)](bool selected) { weak.lock()->setState(selected ? 1 : 0); });
    EXPECT_EQ(box->state(), 1);
    table->deselectRow(1);
    EXPECT_EQ(box->state(), 0);
    table->reloadDataForRowIndexes({1});   // the cell may stand in another row from now on
    table->selectRowIndexes_byExtendingSelection({1}, false);
    EXPECT_EQ(box->state(), 0);
}

TEST_F(Selecting, followsTheSelectedObjectsThroughASort) {
    table->selectRowIndexes_byExtendingSelection({0}, false);
    delegate->take();
    controller->content()->sortUsingDescriptors({NSSortDescriptor("name", false)});
    controller->rearrangeObjects();
    EXPECT_EQ(delegate->take(), "selection {4} controller {4}\n");
    EXPECT_EQ(text(0, 0), "r4");
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(Selecting, followsRowsTakenOutOfTheListDirectly) {
    table->selectRowIndexes_byExtendingSelection({1, 4}, false);
    delegate->take();
    controller->content()->removeObjectsAtIndexes({0, 1});
    table->removeRowsAtIndexes_withAnimation({0, 1}, NSTableViewAnimationSlideRight);
    EXPECT_EQ(delegate->take(), "selection {2} controller {2}\n");
    EXPECT_EQ(names(controller->selectedObjects()), "r4");
    EXPECT_EQ(text(0, 0), "r2");
    const auto animations = table->takeRowAnimations();
    ASSERT_EQ(animations.size(), 1u);
    EXPECT_EQ(animations[0].animation, 64u);
    controller->rearrangeObjects();
    EXPECT_EQ(delegate->take(), "");
    controller->content()->removeObjectAtIndex(0);   // the selected row only gets another number
    table->removeRowsAtIndexes_withAnimation({0});
    EXPECT_EQ(delegate->take(), "");
    EXPECT_EQ(controller->selectionIndexes().toString(), "{1}");
    EXPECT_EQ(table->selectedRow(), 1);
    EXPECT_TRUE(table->isConsistent());
}

TEST_F(Selecting, sendsActionsWithTheClickedRow) {
    class Target : public NSObject {
    public:
        std::string log;
        std::weak_ptr<NSTableView> table;
        Value perform(std::string_view selector, const std::vector<Value> &) override {
            log += std::string(selector) + std::to_string(table.lock()->clickedRow()) + " ";
            return {};
        }
        [[nodiscard]] bool respondsToSelector(std::string_view) const override { return true; }
    };
    const auto target = make<Target>();
    target->table = table;
    table->connect(target, "click:");
    table->setDoubleAction("double:");
    table->performClick(3, 0, 0, 2);
    table->performClick(-1);
    table->setEnabled(false);
    table->performClick(1);
    EXPECT_EQ(target->log, "click:3 double:3 click:-1 ");
}

TEST_F(Selecting, takesClicksThroughTheWindow) {
    const auto window = make<NSWindow>(NSRect(0, 0, 306, 423));
    inScrollView({306, 423});
    window->setContentView(scroll);
    delegate->take();
    // y counts up: the header is at the top, row 1 from 40 to 80 below it
    window->sendEvent(NSEvent::mouse(NSEventType::leftMouseDown, {50, 400 - 45}));
    window->sendEvent(NSEvent::mouse(NSEventType::leftMouseUp, {50, 400 - 45}));
    EXPECT_EQ(delegate->take(), "proposed {1}\nselection {1} controller {1}\n");
    EXPECT_EQ(window->firstResponder(), table);
    window->sendEvent(NSEvent::mouse(NSEventType::rightMouseDown, {150, 400 - 130}));
    EXPECT_EQ(table->clickedRow(), 3);
    EXPECT_EQ(table->clickedColumn(), 1);
    EXPECT_EQ(delegate->take(), "");   // a right click selects nothing by itself
}

TEST_F(Selecting, showsTheRowsOfADataSourceThatCounts) {
    setRows(2);
    EXPECT_EQ(table->numberOfRows(), 2);
    controller->addObject(item("more"));
    EXPECT_EQ(table->numberOfRows(), 2);
    table->unbind("content");
    EXPECT_EQ(text(1, 1), "b1");
}

// ---------------------------------------------------------------- random sequences

// The plain model: the objects of the rows, and which of them stay selected.
TEST_F(Selecting, staysInStepOverRandomSequences) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    inScrollView({306, 223});
    const auto nameOf = [](const id &object) { return static_cast<Item &>(*object).name.str(); };
    NSArray::Items rows = controller->content()->snapshot().items(), selected;
    for (int step = 0; step < 1500; ++step) {
        const std::size_t row = rows.empty() ? 0 : random() % rows.size();
        const auto place = rows.begin() + static_cast<std::ptrdiff_t>(row);
        delegate->heights[static_cast<std::int64_t>(random() % 30)] = static_cast<double>(random() % 90);
        switch (random() % 10) {
        case 0:
        case 1:
            rows.insert(place, item(("n" + std::to_string(random() % 1000)).c_str()));
            controller->insertObject_atArrangedObjectIndex(rows[row], row);
            break;
        case 2:
        case 3:
            if (rows.empty())
                break;
            std::erase(selected, *place);
            rows.erase(place);
            if (random() % 2) {
                controller->removeObjectAtArrangedObjectIndex(row);
            } else {   // behind the controller's back
                controller->content()->removeObjectAtIndex(row);
                table->removeRowsAtIndexes_withAnimation({row});
            }
            break;
        case 4:
            table->performClick(static_cast<std::int64_t>(row), 0, random() % 2 ? kCommand : kShift);
            selected = controller->selectedObjects().items();
            break;
        case 5:
            controller->content()->sortUsingDescriptors({NSSortDescriptor("name")});
            controller->rearrangeObjects();
            std::ranges::stable_sort(rows, {}, nameOf);
            break;
        case 6:
            rows.push_back(item("quiet"));
            controller->content()->addObject(rows.back());
            controller->rearrangeObjects();
            break;
        case 7:
            if (random() % 10)
                break;
            controller->remove();
            std::erase_if(rows, [&](const id &one) { return std::ranges::count(selected, one) > 0; });
            selected.clear();
            break;
        case 8:
            scroll->scrollToPoint({0, static_cast<double>(random() % 1000)});
            break;
        default:
            table->scrollRowToVisible(static_cast<std::int64_t>(row));
        }
        ASSERT_TRUE(table->isConsistent()) << step << " " << table->describeContent();
        ASSERT_TRUE(controller->isConsistent()) << step << " " << controller->toString();
        ASSERT_EQ(controller->arrangedObjects().items(), rows) << step;
        ASSERT_TRUE(std::ranges::is_permutation(controller->selectedObjects(), selected)) << step;
        ASSERT_EQ(table->numberOfRows(), static_cast<std::int64_t>(rows.size())) << step;
        table->enumerateAvailableRowViewsUsingBlock([&](const auto &view, std::int64_t shown) {
            ASSERT_EQ(std::dynamic_pointer_cast<NSTableCellView>(view->viewAtColumn(0))->textField()->stringValue().str(),
                      nameOf(rows[static_cast<std::size_t>(shown)])) << step;
        });
    }
}

}  // namespace

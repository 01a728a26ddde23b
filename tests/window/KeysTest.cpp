// The keys of the program's window, pressed as a person does.
#include <QApplication>

#include <set>

#include "host/window/Accessibility.h"
#include "tests/window/ShellFixture.h"
#include "toolkit/views/NSComboBox.h"

namespace {

class Keys : public ShellTest {
protected:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget *target = QApplication::focusWidget() ? QApplication::focusWidget() : surface;
        QTest::keyClick(target, key, modifiers);
        world.serve();
    }
    void search(const QString &text) {
        press(Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(shell->window()->firstResponder(), shell->searchField());
        world.type(text);
        settle();
    }
    // The keyboard stands in the list, on its first row.
    void intoTheList() { world.clickAt(*shell->list(), inRow(0)); }
};

}  // namespace

TEST_F(Keys, refreshReadsTheListAnew) {
    const std::int64_t all = shell->list()->numberOfRows();
    search("lena");
    ASSERT_LT(shell->list()->numberOfRows(), all);
    press(Qt::Key_F5);
    settle();
    EXPECT_EQ(shell->list()->numberOfRows(), all);
    EXPECT_EQ(shell->searchField()->stringValue(), NSString(""));
}

TEST_F(Keys, escapeEndsTheSearchAndThenReturnsToTheList) {
    const std::int64_t all = shell->list()->numberOfRows();
    search("lena");
    ASSERT_LT(shell->list()->numberOfRows(), all);
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(shell->list()->numberOfRows(), all);
    EXPECT_EQ(shell->window()->firstResponder(), shell->searchField());
    press(Qt::Key_Escape);
    EXPECT_EQ(shell->window()->firstResponder(), shell->list());
}

TEST_F(Keys, selectAllTakesEveryRow) {
    press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_GT(shell->list()->numberOfRows(), 10);
    EXPECT_EQ(shell->list()->numberOfSelectedRows(), shell->list()->numberOfRows());
}

// Also where it has none, and where the menu is told: the window's own widget has the key then.
TEST_F(Keys, selectAllInTheSearchFieldTakesItsText) {
    for (const char *text : {"lena", "", "lena"}) {
        search(text);
        const std::int64_t selected = shell->list()->numberOfSelectedRows();
        *text ? press(Qt::Key_A, Qt::ControlModifier) : QTest::keyClick(surface, Qt::Key_A, Qt::ControlModifier);
        world.type("x");
        EXPECT_EQ(shell->searchField()->stringValue(), NSString("x"));
        EXPECT_LE(shell->list()->numberOfSelectedRows(), selected) << text;
    }
}

TEST_F(Keys, arrowsMoveTheSelectionAndShiftExtendsIt) {
    intoTheList();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(shell->list()->selectedRowIndexes().toString(), "{2}");
    press(Qt::Key_Up);
    EXPECT_EQ(shell->list()->selectedRowIndexes().toString(), "{1}");
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(shell->list()->selectedRowIndexes().toString(), "{1-2}");
    press(Qt::Key_End);
    EXPECT_EQ(shell->list()->selectedRow(), shell->list()->numberOfRows() - 1);
    press(Qt::Key_Home);
    EXPECT_EQ(shell->list()->selectedRow(), 0);
}

TEST_F(Keys, deleteAsksFirstAndEscapeKeepsTheRow) {
    const std::int64_t all = shell->list()->numberOfRows();
    intoTheList();
    world.once([] { return NSApp()->modalWindow() != nullptr; }, [this] {
        pictureOfModal("delete-question");
        keyInModal(Qt::Key_Escape);
    });
    press(Qt::Key_Delete);
    settle();
    EXPECT_EQ(NSApp()->modalWindow(), nullptr);
    EXPECT_EQ(shell->list()->numberOfRows(), all);
}

TEST_F(Keys, deleteWithNothingSelectedDoesNothing) {
    shell->list()->deselectAll();
    world.serve();
    shell->window()->makeFirstResponder(shell->list());
    press(Qt::Key_Delete);
    EXPECT_EQ(NSApp()->modalWindow(), nullptr);
}

TEST_F(Keys, controlWithADigitChoosesTheCategoryOfThatNumber) {
    struct {
        Qt::Key key;
        const char *button;   // one that this category alone has
    } rows[] = {{Qt::Key_0, "AddButton"}, {Qt::Key_6, "NewContactButton"}};
    for (const auto &[key, button] : rows) {
        press(key, Qt::ControlModifier);
        settle();
        EXPECT_NE(shell->buttonNamed(button), nullptr) << key;
    }
}

TEST_F(Keys, controlWithADigitWorksWhileASearchIsTyped) {
    search("le");
    press(Qt::Key_0, Qt::ControlModifier);
    settle();
    EXPECT_NE(shell->buttonNamed("AddButton"), nullptr);
}

TEST_F(Keys, tabGoesRoundThroughSearchAndListAndBack) {
    search("");
    std::vector<std::string> way;
    for (int i = 0; i < 80; ++i) {
        press(Qt::Key_Tab);
        const auto view = std::dynamic_pointer_cast<NSView>(shell->window()->firstResponder());
        ASSERT_NE(view, nullptr);
        if (view == shell->searchField())
            break;
        way.push_back(host::accessibleNameOf(*view));
    }
    EXPECT_EQ(shell->window()->firstResponder(), shell->searchField()) << testing::PrintToString(way);
    EXPECT_NE(std::ranges::find(way, host::accessibleNameOf(*shell->list())), way.end());
    for (const std::string &name : way)
        EXPECT_NE(name, "");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    const auto before = std::dynamic_pointer_cast<NSView>(shell->window()->firstResponder());
    ASSERT_FALSE(way.empty());
    EXPECT_EQ(host::accessibleNameOf(*before), way.back());
}

// From field to field of the editor, no stop without a control; its caret stands in the first field.
TEST_F(Keys, tabGoesThroughTheEditorsFields) {
    std::string way;
    world.once([] { return NSApp()->modalWindow() && NSApp()->modalWindow()->isVisible() && dispatch::waitingMainBlocks() == 0; }, [&] {
        const auto window = NSApp()->modalWindow();
        const auto focus = [&] { return std::dynamic_pointer_cast<NSView>(window->firstResponder()); };
        for (int i = 0; i < 11 && focus(); ++i) {
            way += focus()->identifier().str() + " ";
            press(Qt::Key_Tab);
        }
        window->performClose();
    });
    shell->press("NewContactButton");
    EXPECT_EQ(way, "first last company phone1 phone2 email1 email2 note GroupList Cancel Picture ");
}

TEST_F(Keys, pagesOfAConversationScroll) {
    show(6);
    const auto table = std::dynamic_pointer_cast<NSTableView>(shell->window()->contentView()->viewWithIdentifier("ConversationTable"));
    ASSERT_NE(table, nullptr);
    shell->window()->makeFirstResponder(table);
    world.serve();
    const auto top = [&] { return table->visibleRect().minY(); };
    const double end = top();   // a conversation shows its newest message first
    ASSERT_GT(end, 0);
    struct {
        Qt::Key key;
        bool isEnd;
    } rows[] = {{Qt::Key_Home, false}, {Qt::Key_End, true}, {Qt::Key_Up, false}, {Qt::Key_Down, true}, {Qt::Key_PageUp, false}, {Qt::Key_PageDown, true}};
    for (const auto &[key, isEnd] : rows) {
        press(key);
        EXPECT_EQ(top() == end, isEnd) << key;
    }
}

TEST_F(Keys, theSpaceBarOpensTheNamesOfTheMergeWindow) {
    std::string name;
    world.once([] { return modalButton("Merge") != nullptr && dispatch::waitingMainBlocks() == 0; }, [&] {
        const auto window = NSApp()->modalWindow();
        const auto combo = [&] { return std::dynamic_pointer_cast<NSComboBox>(window->firstResponder()); };
        for (int i = 0; i < 40 && !combo(); ++i)
            press(Qt::Key_Tab);
        ASSERT_NE(combo(), nullptr);
        pictureOfModal("merge-names");
        QTimer::singleShot(0, [] {
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
            QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
        });
        press(Qt::Key_Space);
        name = combo()->stringValue().str();
        window->performClose();
    });
    shell->press("DuplicateButton");
    world.until([&] { return !name.empty() && !NSApp()->modalWindow(); }, "the merge window's end");
    EXPECT_EQ(name, "Lena Fischer");
}

TEST_F(Keys, enterPressesTheDefaultButtonOfADialogAndOfAFinishedProgress) {
    const std::int64_t all = shell->list()->numberOfRows();
    intoTheList();
    world.once([] { return NSApp()->modalWindow() != nullptr; }, [this] {
        world.once([] { return doneButton() != nullptr; }, [this] { keyInModal(Qt::Key_Return); });
        keyInModal(Qt::Key_Return);
    });
    press(Qt::Key_Delete);
    settle();
    EXPECT_EQ(shell->list()->numberOfRows(), all - 1);
}

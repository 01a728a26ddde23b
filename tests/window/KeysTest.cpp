// The keys of the program's window, pressed as a person does.
#include <QApplication>

#include <set>

#include "host/window/Accessibility.h"
#include "tests/window/ShellFixture.h"

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

TEST_F(Keys, selectAllInTheSearchFieldTakesItsText) {
    search("lena");
    const std::int64_t selected = shell->list()->numberOfSelectedRows();
    press(Qt::Key_A, Qt::ControlModifier);
    world.type("x");
    EXPECT_EQ(shell->searchField()->stringValue(), NSString("x"));
    EXPECT_LE(shell->list()->numberOfSelectedRows(), selected);
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

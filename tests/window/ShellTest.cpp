// The program's window: what a person sees of it and does by clicks, keys and drops.
#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QUrl>

#include <algorithm>

#include "host/window/Accessibility.h"
#include "tests/window/ShellFixture.h"

TEST_F(ShellTest, showsTheContactsOfTheDeviceAndNamesEveryControl) {
    EXPECT_GT(shell->list()->numberOfRows(), 10);
    EXPECT_EQ(surface->parentWidget()->windowTitle().toStdString(), shell->window()->title().str());
    EXPECT_EQ(host::accessibilityDump(*surface).find("unnamed"), std::string::npos) << host::accessibilityDump(*surface);
    picture("contacts-light");
}

TEST_F(ShellTest, searchesAsOneTypesAndSelectsByClicks) {
    const std::int64_t all = shell->list()->numberOfRows();
    QTest::keyClick(surface, Qt::Key_F, Qt::ControlModifier);
    world.serve();
    ASSERT_NE(shell->searchField(), nullptr);
    if (shell->window()->firstResponder() != shell->searchField())
        world.click(*shell->searchField());
    world.type("lena");
    ASSERT_TRUE(world.until([&] { return shell->list()->numberOfRows() < all && dispatch::waitingMainBlocks() == 0; }, "fewer rows"));
    EXPECT_EQ(cell(0), "Lena Fischer");
    world.clickAt(*shell->list(), inRow(0));
    EXPECT_EQ(shell->list()->numberOfSelectedRows(), 1);
    picture("contacts-search");
}

TEST_F(ShellTest, theListTakesClicksWheelAndScrollBar) {
    const auto list = shell->list();
    world.clickAt(*list, inRow(3));
    world.clickAt(*list, inRow(6), Qt::ControlModifier);
    EXPECT_EQ(list->selectedRowIndexes().toString(), "{3, 6}");
    world.clickAt(*list, inRow(8), Qt::ShiftModifier);
    EXPECT_TRUE(list->isRowSelected(8));
    world.wheel(*list, -5);
    EXPECT_EQ(list->visibleRect().minY(), 300);
    world.serve();
    const auto bars = surface->findChildren<QScrollBar *>();
    const auto bar = std::ranges::find_if(bars, [](const QScrollBar *one) { return one->isVisible() && one->value() == 300; });
    ASSERT_NE(bar, bars.end());
    (*bar)->setValue((*bar)->maximum());   // the heights of the rows there are not known before
    world.serve();
    const std::int64_t last = list->numberOfRows() - 1;
    EXPECT_EQ(list->rowAtPoint({10, list->visibleRect().maxY() - 5}), last);
    world.clickAt(*list, inRow(last));
    EXPECT_EQ(list->selectedRow(), last);
    EXPECT_TRUE(list->isConsistent());
}

TEST_F(ShellTest, aCategoryWithoutANibShowsSoAndTheTreeFollows) {
    shell->choose(7);
    EXPECT_TRUE(world.until([&] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0; }));
    EXPECT_EQ(shell->list(), nullptr);
    shell->choose(host::kContactsCategory);
    EXPECT_TRUE(world.until([&] { return shell->list() != nullptr; }));
}

TEST_F(ShellTest, aDroppedCardGoesThroughTheImportButton) {
    const std::filesystem::path card = cards(1);
    const auto button = shell->buttonNamed("ImportButton");
    ASSERT_NE(button, nullptr);
    const std::int64_t before = shell->list()->numberOfRows();
    EXPECT_FALSE(shell->takesFiles(nullptr));
    // The drop's own call ends with the flow's window, which waits for a person.
    world.once([] { return doneButton() != nullptr; }, [this] {
        pictureOfModal("import-result");
        world.click(*doneButton());
    });
    EXPECT_TRUE(shell->dropFiles(shell->list(), {QString::fromStdString(card.string())}));
    ASSERT_TRUE(world.until([&] { return shell->hasLoaded() && shell->list() && shell->list()->numberOfRows() == before + 1; }, "one row more"));
}

// The events of a drag from a file manager, with a file that is rewritten before the flow reads it.
TEST_F(ShellTest, aFileDraggedOntoTheListIsImportedAndRefusedBesideIt) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(QStringLiteral(HN_SAMPLES_DIR "/vcard/outlook-2003.vcf"))});
    const auto dragged = [&](const QPoint &place) {
        QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(surface, &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(surface, &move);
        return enter.isAccepted() && move.isAccepted();
    };
    const QPoint list = surface->rectOf(*shell->list(), shell->list()->viewport()).center().toPoint();
    const std::int64_t before = shell->list()->numberOfRows();
    EXPECT_FALSE(dragged(QPoint(20, 300)));   // over the tree
    EXPECT_TRUE(dragged(list));
    world.once([] { return doneButton() != nullptr; }, [this] { world.click(*doneButton()); });
    QDropEvent drop(list, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(shell->list()->numberOfRows(), before);   // the other program does not wait for the flow
    EXPECT_TRUE(world.until([&] { return shell->hasLoaded() && shell->list() && shell->list()->numberOfRows() == before + 1; }, "one row more"));
    for (QWidget *box : QApplication::topLevelWidgets())
        if (box->inherits("QMessageBox"))
            box->close();
}

TEST_F(ShellTest, switchesDevicesAndRemembersThem) {
    const std::filesystem::path other = folders.path() / "other";
    device::sample::createImage(other, "Other Phone");
    EXPECT_FALSE(shell->openDevice(folders.path() / "nothing"));
    world.serve();
    for (QWidget *box : QApplication::topLevelWidgets())
        if (box->inherits("QMessageBox"))
            box->close();
    EXPECT_EQ(shell->window()->title(), NSString("Sample Phone"));
    ASSERT_TRUE(shell->openDevice(other));
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Other Phone");
    EXPECT_TRUE(world.until([&] { return shell->hasLoaded() && dispatch::waitingMainBlocks() == 0; }));
    EXPECT_EQ(shell->recentDevices(), (std::vector<std::string>{other.string(), image().string()}));
    picture("contacts-empty");

    ASSERT_TRUE(shell->openDevice(image()));
    QMenu *recent = nullptr;
    for (QMenu *menu : surface->parentWidget()->findChildren<QMenu *>())
        if (menu->title() == "Open &Recent")
            recent = menu;
    ASSERT_NE(recent, nullptr);
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 2);
    EXPECT_EQ(recent->actions().at(0)->text().toStdString(), image().string());
    recent->actions().at(1)->trigger();
    settle();
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Other Phone");
    EXPECT_EQ(shell->recentDevices(), (std::vector<std::string>{other.string(), image().string()}));
}

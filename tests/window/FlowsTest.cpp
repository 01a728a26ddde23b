// Whole flows in the program's window: import, cancelling, sorting, ticking, the device that goes away.
#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <sys/resource.h>

#include <csignal>
#include <cstring>

#include "device/FileTree.h"
#include "host/window/Accessibility.h"
#include "host/window/Notices.h"
#include "host/window/PanelMirror.h"
#include "tests/window/ShellFixture.h"
#include "toolkit/services/NSWorkspace.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSScrollView.h"

namespace {

class Flows : public ShellTest {
protected:
    std::shared_ptr<NSButton> headBox() {
        return std::dynamic_pointer_cast<NSButton>(shell->list()->headerView()->viewWithIdentifier("HeadCheckBox"));
    }
    // The dropped file's flow runs inside the drop; the person answers it meanwhile.
    void drop(const std::filesystem::path &file) {
        EXPECT_TRUE(shell->dropFiles(shell->list(), {QString::fromStdString(file.string())}));
        settle();
    }
    void whenDoneClose() {
        world.once([] { return doneButton() != nullptr; }, [this] { world.click(*doneButton()); });
    }
    // As soon as the flow works: its cancel button, then this answer to the question.
    void cancelAndAnswer(const char *answer) {
        world.once([] { return modalButton("borderButton") != nullptr; }, [this, answer] {
            world.once([] { return modalButton("leftButton") != nullptr; }, [this, answer] {
                pictureOfModal("cancel-question");
                EXPECT_EQ(host::accessibilityDump(world.surfaceOf(*NSApp()->modalWindow()->contentView())).find("unnamed"), std::string::npos);
                world.click(*modalButton(answer));
            });
            pictureOfModal("import-progress");
            world.click(*modalButton("borderButton"));
        });
    }
    // Of the next menu that opens; closes it.
    void readMenu(QStringList &entries, const char *name) {
        QTimer::singleShot(0, [this, &entries, name] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction *action : menu->actions())
                entries << action->text();
            world.picture(*menu, name);
            menu->close();
        });
    }
    std::vector<std::string> notices(const char *part = "text") {
        std::vector<std::string> texts;
        for (QWidget *box : QApplication::topLevelWidgets())
            if (box->inherits("QMessageBox") && box->isVisible())
                texts.push_back(box->property(part).toString().toStdString());
        return texts;
    }
    // The entry of the export button's menu, then this file in the save panel, yes to replacing, and the result's left button.
    void exportTo(int entry, const std::filesystem::path &file) {
        const auto isAsked = [] { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); };
        world.once([this] { return world.presenter().openPanel() != nullptr; }, [this, file, isAsked] {
            if (std::filesystem::exists(file))
                world.once(isAsked, [isAsked] { isAsked()->button(QMessageBox::Yes)->click(); });
            auto *name = world.presenter().openPanel()->findChild<QLineEdit *>();
            name->setText(QString::fromStdString(file.string()));
            QTest::keyClick(name, Qt::Key_Return);
        });
        world.once([] { return modalButton("leftButton") != nullptr; }, [this] { world.click(*modalButton("leftButton")); });
        QTimer::singleShot(0, [entry] {
            QWidget *menu = QApplication::activePopupWidget();
            ASSERT_NE(menu, nullptr);
            for (int i = 0; i <= entry; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        world.click(*shell->buttonNamed("ExportButton"));
    }
    void closeNotices() {
        for (QWidget *box : QApplication::topLevelWidgets())
            if (box->inherits("QMessageBox"))
                box->close();
        world.serve();
    }
};

}  // namespace

TEST_F(Flows, aClickOnTheHeaderSortsAndTheNextTurnsRound) {
    const auto header = shell->list()->headerView();
    const NSRect name = header->headerRectOfColumn(1);
    const NSPoint middle{name.minX() + 60, name.size.height / 2};
    world.clickAt(*header, middle);
    settle();
    const std::string first = cell(0);
    const auto order = shell->list()->sortIndicatorOfColumn(1);
    EXPECT_NE(order, SortIndicator::none);
    world.clickAt(*header, middle);
    settle();
    EXPECT_NE(shell->list()->sortIndicatorOfColumn(1), order);
    EXPECT_NE(cell(0), first);
    picture("contacts-sorted");
}

TEST_F(Flows, theHeadBoxTicksAllShowsAMixtureAndUnticksAll) {
    ASSERT_NE(headBox(), nullptr);
    EXPECT_EQ(headBox()->state(), NSOffState);
    world.click(*headBox());
    settle();
    EXPECT_EQ(headBox()->state(), NSOnState);
    EXPECT_NE(shell->buttonNamed("DeleteButton"), nullptr);
    const NSRect box = shell->list()->frameOfCellAtColumn_row(0, 0);
    world.clickAt(*shell->list(), {box.minX() + box.size.width / 2, box.minY() + box.size.height / 2});
    settle();
    EXPECT_EQ(headBox()->state(), NSMixedState);
    picture("contacts-mixed");
    world.click(*headBox());
    settle();
    world.click(*headBox());
    settle();
    EXPECT_EQ(headBox()->state(), NSOffState);
}

TEST_F(Flows, cancellingAnImportAndThinkingBetterOfItImportsAll) {
    const std::int64_t before = shell->list()->numberOfRows();
    cancelAndAnswer("rightButton");
    whenDoneClose();
    drop(cards(1500));
    EXPECT_EQ(shell->list()->numberOfRows(), before + 1500);
}

TEST_F(Flows, cancellingAnImportStopsItAndKeepsWhatIsDone) {
    const std::int64_t before = shell->list()->numberOfRows();
    cancelAndAnswer("leftButton");
    whenDoneClose();
    drop(cards(1500));
    EXPECT_LT(shell->list()->numberOfRows(), before + 1500);
    EXPECT_GE(shell->list()->numberOfRows(), before);
}

TEST_F(Flows, aDeviceThatGoesAwayIsToldAndComesBackByOpening) {
    const auto away = folders.path() / "unplugged";
    std::filesystem::rename(image(), away);
    ASSERT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
    ASSERT_EQ(notices().size(), 1u);
    EXPECT_EQ(notices().front(), "Sample Phone is no longer connected.");
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Sample Phone (disconnected)");
    picture("contacts-disconnected");
    closeNotices();
    ASSERT_TRUE(shell->openDevice(away));
    settle();
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Sample Phone");
    EXPECT_GT(shell->list()->numberOfRows(), 10);
}

TEST_F(Flows, aDeviceThatGoesAwayDuringAnImportEndsItsWindow) {
    world.once([] { return modalButton("borderButton") != nullptr; }, [this] { std::filesystem::rename(image(), folders.path() / "unplugged"); });
    whenDoneClose();
    shell->dropFiles(shell->list(), {QString::fromStdString(cards(1500).string())});
    EXPECT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
    EXPECT_EQ(NSApp()->modalWindow(), nullptr);
    closeNotices();
}

TEST_F(Flows, anotherDeviceDuringAModalQuestionTakesItsPlaceAfterwards) {
    const auto other = folders.path() / "other";
    device::sample::createImage(other, "Other Phone");
    world.clickAt(*shell->list(), inRow(0));
    world.once([] { return NSApp()->modalWindow() != nullptr; }, [this, other] {
        EXPECT_TRUE(shell->openDevice(other));
        world.once([] { return true; }, [this] {
            if (NSApp()->modalWindow())
                keyInModal(Qt::Key_Escape);
        });
    });
    QTest::keyClick(surface, Qt::Key_Delete);
    settle();
    EXPECT_EQ(NSApp()->modalWindow(), nullptr);
    EXPECT_EQ(surface->parentWidget()->windowTitle(), "Other Phone");
    show(host::kContactsCategory);
    EXPECT_TRUE(!shell->list() || shell->list()->numberOfRows() == 0);
}

// On a disk that fills up on the way.
TEST_F(Flows, aFailedExportLeavesWhatStoodThereAndIsTold) {
    whenDoneClose();
    drop(cards(300));
    const auto folder = folders.path() / "out";
    std::filesystem::create_directory(folder);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto old = std::signal(SIGXFSZ, SIG_IGN);
    const char *names[] = {"people.vcf", "people.csv"};   // in the order of the menu
    for (const int entry : {0, 1})
        for (const char *stood : {"", "old"}) {
            const auto file = folder / names[entry];
            if (*stood)
                std::ofstream(file) << stood;
            shell->selectAll();
            constexpr rlim_t kRoom = 8192;   // the settings fit
            const rlimit small{kRoom, before.rlim_max};
            setrlimit(RLIMIT_FSIZE, &small);
            exportTo(entry, file);
            EXPECT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
            setrlimit(RLIMIT_FSIZE, &before);
            const auto reasons = notices("informativeText");
            EXPECT_TRUE(reasons.size() == 1 && reasons[0].starts_with(file.string() + ": ")) << testing::PrintToString(reasons);
            closeNotices();
            std::ifstream left(file);
            EXPECT_EQ(std::string(std::istreambuf_iterator<char>(left), {}), stood) << file;
            const std::filesystem::directory_iterator all(folder), end;
            EXPECT_EQ(std::distance(all, end), *stood ? 1 : 0) << file;
            std::filesystem::remove(file);
        }
    std::signal(SIGXFSZ, old);
}

TEST_F(Flows, whatAForeignFileLosesIsToldAfterItsImport) {
    const auto file = folders.path() / "people.csv";
    std::ofstream(file) << "First Name;Last Name;Mobile Phone;Shoe Size\nAda;King;+44 20 1;39\n";
    world.once([] { return doneButton() != nullptr; }, [this] {
        EXPECT_TRUE(notices().empty()) << "below the modal window";
        keyInModal(Qt::Key_Return);
    });
    drop(file);
    ASSERT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
    EXPECT_EQ(notices().front(), "people.csv was written by another program.");
    EXPECT_NE(notices("detailedText").front().find("Shoe Size"), std::string::npos) << notices("detailedText").front();
    closeNotices();
}

TEST_F(Flows, aNoticeGivesWayToAFlowsWindowAndComesBackAfterIt) {
    world.clickAt(*shell->list(), inRow(0));
    settle();
    host::showNotice(nullptr, "Something failed.", {});
    world.once([] { return NSApp()->modalWindow() && NSApp()->modalWindow()->isVisible(); }, [this] {
        EXPECT_TRUE(notices().empty());
        keyInModal(Qt::Key_Escape);
    });
    shell->press("DeleteButton");
    EXPECT_TRUE(world.until([&] { return !notices().empty(); }, "the notice"));
    EXPECT_EQ(NSApp()->modalWindow(), nullptr);
    closeNotices();
}

TEST_F(Flows, anImportThatRepeatsContactsSaysSo) {
    for (const bool isSecond : {false, true}) {
        whenDoneClose();
        drop(cards(3));
        if (isSecond) {
            ASSERT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
        }
        EXPECT_EQ(notices(), isSecond ? std::vector<std::string>{"3 of the 3 new contacts repeat one that was there."} : std::vector<std::string>());
    }
    closeNotices();
}

TEST_F(Flows, aFolderThatNothingOpensIsTold) {
    const auto programs = folders.path() / "programs", opener = programs / "xdg-open";
    std::filesystem::create_directory(programs);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", programs.c_str());
    for (const bool isThere : {false, true}) {
        if (isThere) {
            std::ofstream(opener) << "#!/bin/sh\nexit 3\n";   // it found no program itself
            std::filesystem::permissions(opener, std::filesystem::perms::owner_all);
        }
        EXPECT_EQ(NSWorkspace::sharedWorkspace().openFile(programs.c_str()), isThere);
        ASSERT_TRUE(world.until([&] { return !notices().empty(); }, "a notice"));
        EXPECT_EQ(notices(), std::vector<std::string>{programs.string() + " cannot be opened."});
        closeNotices();
    }
    qputenv("PATH", before);
}

TEST_F(Flows, theSizeIsRememberedForTheNextStart) {
    surface->parentWidget()->resize(1000, 600);
    world.serve();
    shell->window()->performClose();
    world.serve();
    close();
    open();
    EXPECT_EQ(surface->parentWidget()->width(), 1000);
    EXPECT_NEAR(surface->parentWidget()->height(), 600, 1);
}

TEST_F(Flows, theStepsOutOfTheCloudFitTheSmallestWindow) {
    const auto cloud = folders.path() / "cloud";
    std::filesystem::copy(image(), cloud, std::filesystem::copy_options::recursive);
    std::ifstream file(cloud / "Device.plist");
    std::string text(std::istreambuf_iterator<char>(file), {});
    const std::size_t flag = text.find("<false/>", text.find("CloudContacts"));
    ASSERT_NE(flag, std::string::npos);
    std::ofstream(cloud / "Device.plist") << text.replace(flag, std::strlen("<false/>"), "<true/>");
    ASSERT_TRUE(shell->openDevice(cloud));
    surface->parentWidget()->resize(host::Shell::kLeastWidth, host::Shell::kLeastHeight);
    settle();
    const auto button = shell->buttonNamed("RetryButton");
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(QRectF(surface->rect()).contains(surface->rectOf(*button))) << surface->rectOf(*button).bottom();
    EXPECT_EQ(surface->viewAt(surface->rectOf(*button).center()), button);
    picture("contacts-cloud");
}

TEST_F(Flows, aRightClickOpensTheRowsMenu) {
    QStringList entries;
    readMenu(entries, "contacts-menu");
    world.clickAt(*shell->list(), inRow(1), {}, Qt::RightButton);
    EXPECT_EQ(entries.join(u'|'), "Edit Contact…|Export to vCard File…|Export to CSV File…");
}

TEST_F(Flows, aMenuButtonOffersItsEntriesWithoutItsOwnTitle) {
    show(9);
    const auto button = shell->buttonNamed("AddButton");
    ASSERT_NE(button, nullptr);
    QStringList entries;
    readMenu(entries, "bookmarks-add-menu");
    world.click(*button);
    EXPECT_EQ(entries.join(u'|').toStdString(), "Add Folder|Add Bookmark");
}

TEST_F(Flows, aProgressWindowTellsTheItemAndMovesItsBar) {
    const auto part = [](const char *name) { return NSApp()->modalWindow()->contentView()->viewWithIdentifier(name); };
    bool isSeen = false;
    world.once([&] {
        const auto bar = NSApp()->modalWindow() ? std::dynamic_pointer_cast<NSProgressIndicator>(part("progressIndicator")) : nullptr;
        return bar && bar->doubleValue() > 10 && !doneButton();
    }, [&] {
        isSeen = true;
        const auto bar = std::dynamic_pointer_cast<NSProgressIndicator>(part("progressIndicator"));
        const auto label = std::dynamic_pointer_cast<NSTextField>(part("mainLabel"))->stringValue();
        EXPECT_NE(label.rangeOfString(" of 1500"), std::nullopt) << label.str();
        const QRectF place = world.surfaceOf(*bar).rectOf(*bar);
        const QImage picture = world.picture(*world.presenter().mirrorOf(*NSApp()->modalWindow()), "import-item");
        const int y = static_cast<int>(place.center().y());
        EXPECT_NE(picture.pixelColor(static_cast<int>(place.left()) + 3, y), picture.pixelColor(static_cast<int>(place.right()) - 5, y));
    });
    whenDoneClose();
    drop(cards(1500));
    EXPECT_TRUE(isSeen);
}

TEST_F(Flows, aClickOnAGroupOfTheTreeOpensAndClosesIt) {
    const auto tree = std::dynamic_pointer_cast<NSTableView>(shell->window()->contentView()->viewWithIdentifier("CategoryTree"));
    ASSERT_NE(tree, nullptr);
    const std::int64_t rows = tree->numberOfRows();
    const auto clickRow = [&](std::int64_t row) {
        const NSRect place = tree->rectOfRow(row);
        world.clickAt(*tree, {place.minX() + 80, place.minY() + place.size.height / 2});
        world.serve();
    };
    clickRow(0);   // open, and the leaf on show is none of its own: its first leaf is chosen
    EXPECT_EQ(tree->selectedRow(), 1);
    EXPECT_EQ(tree->numberOfRows(), rows);
    clickRow(0);
    EXPECT_LT(tree->numberOfRows(), rows);
    clickRow(0);
    EXPECT_EQ(tree->numberOfRows(), rows);
    constexpr std::int64_t kMusic = 3;   // below Photos, Camera Roll and Albums
    clickRow(kMusic);
    EXPECT_GT(tree->numberOfRows(), rows);
    clickRow(kMusic);
    EXPECT_EQ(tree->numberOfRows(), rows);
}

TEST_F(Flows, everyViewHasNamesForAllItsControls) {
    for (const std::int64_t category : {host::kContactsCategory, std::int64_t{6}, std::int64_t{9}}) {
        show(category);
        const std::string dump = host::accessibilityDump(*surface);
        EXPECT_EQ(dump.find("unnamed"), std::string::npos) << dump;
        picture(("category-" + std::to_string(category)).c_str());
    }
}

// The window of each button, looked at and closed again by the Esc key.
TEST_F(Flows, everyWindowHasNamesForAllItsControls) {
    struct {
        std::int64_t category;
        const char *button, *name;
    } rows[] = {{host::kContactsCategory, "NewContactButton", "contact-editor"}, {host::kContactsCategory, "DuplicateButton", "duplicates"}};
    for (const auto &[category, button, name] : rows) {
        show(category);
        bool isSeen = false;
        // A notice that a search goes on is modal as well, and cannot be closed.
        const auto isShown = [] {
            const auto window = NSApp()->modalWindow();
            return window && window->isVisible() && (window->styleMask() & NSClosableWindowMask) && dispatch::waitingMainBlocks() == 0;
        };
        world.once(isShown, [&, name = name] {
            isSeen = true;
            const std::string dump = host::accessibilityDump(world.surfaceOf(*NSApp()->modalWindow()->contentView()));
            EXPECT_EQ(dump.find("unnamed"), std::string::npos) << name << "\n" << dump;
            pictureOfModal(name);
            NSApp()->modalWindow()->performClose();
        });
        shell->press(button);
        EXPECT_TRUE(world.until([&] { return isSeen && !NSApp()->modalWindow(); }, name));
        settle();
    }
}

// Widgets and views in step, one kind of control after the other.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "host/window/Accessibility.h"
#include "host/window/ViewSurface.h"
#include "tests/support/EventLog.h"
#include "tests/window/WindowWorld.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSPopUpButton.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/NSTextField.h"

namespace {

// A painted view that notes what reaches it.
class Sheet : public NSView {
public:
    void drawRect(const NSRect &, Canvas &canvas) override { canvas.fillRect(bounds(), color); }
    void mouseDown(NSEvent &event) override { log.add("down " + describe(event)); }
    void mouseUp(NSEvent &event) override { log.add("up " + describe(event)); }
    void mouseEntered(NSEvent &) override { log.add("entered"); }
    void mouseExited(NSEvent &) override { log.add("exited"); }
    void keyDown(NSEvent &event) override { log.add("key " + std::to_string(event.keyCode) + (event.has(NSEventModifierFlagCommand) ? " command" : "")); }
    bool acceptsFirstResponder() const override { return true; }

    std::shared_ptr<NSColor> color = NSColor::redColor();
    EventLog log;

private:
    std::string describe(const NSEvent &event) {
        const NSPoint point = convertPoint_fromView(event.locationInWindow, nullptr);
        return std::to_string(int(point.x)) + "," + std::to_string(int(point.y)) + " x" + std::to_string(event.clickCount);
    }
};

class Actions : public NSObject, public NSTextFieldDelegate, public NSWindowDelegate {
public:
    void onPress() { log.add("pressed"); }
    void controlTextDidChange(NSTextField &field) override { log.add("text " + field.stringValue().str()); }
    void controlTextDidEndEditing(NSTextField &, TextMovement movement) override { log.add(movement == TextMovement::tab ? "end by tab" : "end"); }
    bool windowShouldClose(NSWindow &) override { return mayClose; }
    void windowWillClose(NSWindow &) override { log.add("will close"); }
    bool mayClose = true;
    EventLog log;
    HN_DECLARE_CLASS_TABLE
};
HN_CLASS_TABLE(Actions, NSObjectTable, .selector("onPress:", &Actions::onPress))

class Mirror : public testing::Test {
protected:
    void SetUp() override {
        window = make<NSWindow>(NSRect(60, 60, 400, 300), NSTitledWindowMask | NSClosableWindowMask | NSResizableWindowMask);
        window->setTitle("Mirror");
        surface = &world.show(window);
    }
    template <class View> std::shared_ptr<View> add(const NSRect &frame) {
        const auto view = make<View>(frame);
        window->contentView()->addSubview(view);
        return view;
    }
    // Of the window as it stands on the screen.
    QColor at(int x, int y) {
        world.serve();
        return surface->grab().toImage().pixelColor(x, y);
    }

    WindowWorld world;
    std::shared_ptr<Actions> actions = make<Actions>();
    std::shared_ptr<NSWindow> window;
    host::ViewSurface *surface = nullptr;
};

const QColor kRed(255, 0, 0);

}  // namespace

TEST_F(Mirror, showsWhatIsAddedMovedHiddenAndTakenAway) {
    const QColor ground = at(20, 20);
    const auto sheet = add<Sheet>({10, 250, 40, 40});   // y counts up: 10 to 50 from the top
    EXPECT_NE(at(20, 20), ground);
    EXPECT_EQ(at(20, 60), ground);
    sheet->setFrameOrigin({10, 210});
    EXPECT_EQ(at(20, 20), ground);
    EXPECT_NE(at(20, 60), ground);
    sheet->setHidden(true);
    EXPECT_EQ(at(20, 60), ground);
    sheet->setHidden(false);
    EXPECT_NE(at(20, 60), ground);
    sheet->removeFromSuperview();
    EXPECT_EQ(at(20, 60), ground);
}

TEST_F(Mirror, cutsASubviewAtItsSuperview) {
    const auto pane = add<NSView>({0, 200, 100, 100});
    pane->addSubview(make<Sheet>(NSRect(50, 0, 200, 100)));
    const QColor ground = at(20, 20);
    EXPECT_NE(at(80, 20), ground);
    EXPECT_EQ(at(120, 20), ground);
}

TEST_F(Mirror, handsRawEventsToTheViewUnderTheMouse) {
    const auto sheet = add<Sheet>({100, 100, 100, 50});
    world.clickAt(*sheet, {30, 20});
    EXPECT_EQ(sheet->log.take(), "down 30,20 x1\nup 30,20 x1");
    world.doubleClickAt(*sheet, {5, 5});
    EXPECT_EQ(sheet->log.take(), "down 5,5 x1\nup 5,5 x1\ndown 5,5 x2\nup 5,5 x1");
    world.key(Qt::Key_Delete);
    world.key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(sheet->log.take(), "key 117\nkey 0 command");
}

TEST_F(Mirror, crossesTrackingAreas) {
    const auto sheet = add<Sheet>({100, 100, 100, 50});
    sheet->addTrackingArea(make<NSTrackingArea>(NSRect(), sheet));
    world.moveMouse(*sheet, {50, 25});
    world.moveMouse(*sheet, {-50, 25});
    EXPECT_EQ(sheet->log.take(), "entered\nexited");
}

TEST_F(Mirror, aButtonRunsItsActionByMouseAndSpaceAndNotWhileDisabled) {
    const auto button = add<NSButton>({20, 20, 100, 28});
    button->setTitle("Go");
    button->connect(actions, "onPress:");
    world.click(*button);
    EXPECT_EQ(actions->log.take(), "pressed");
    world.key(Qt::Key_Space);
    EXPECT_EQ(actions->log.take(), "pressed");
    button->setEnabled(false);
    world.click(*button);
    EXPECT_EQ(actions->log.take(), "");
}

TEST_F(Mirror, typingReachesTheDelegateAndAProgramsTextTheEditor) {
    const auto first = add<NSTextField>({20, 200, 200, 28}), second = add<NSTextField>({20, 150, 200, 28});
    first->setDelegate(actions);
    world.click(*first);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    world.type("Ad");
    EXPECT_EQ(actions->log.take(), "text A\ntext Ad");
    first->setStringValue("Grace");
    EXPECT_EQ(editor->text(), "Grace");
    world.key(Qt::Key_Tab);
    world.serve();
    EXPECT_EQ(actions->log.take(), "end");
    EXPECT_EQ(window->firstResponder(), second);
    EXPECT_NE(qobject_cast<QLineEdit *>(QApplication::focusWidget()), nullptr);
    world.type("x");
    EXPECT_EQ(second->stringValue(), NSString("x"));
}

TEST_F(Mirror, returnInAFieldSendsItsAction) {
    const auto field = add<NSTextField>({20, 200, 200, 28});
    field->connect(actions, "onPress:");
    world.click(*field);
    world.key(Qt::Key_Return);
    EXPECT_EQ(actions->log.take(), "pressed");
}

TEST_F(Mirror, aSecureFieldShowsNoText) {
    const auto field = add<NSSecureTextField>({20, 200, 200, 28});
    world.click(*field);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    world.type("secret");
    EXPECT_EQ(editor->echoMode(), QLineEdit::Password);
    EXPECT_EQ(field->stringValue(), NSString("secret"));
}

TEST_F(Mirror, aPopUpChoosesFromItsMenu) {
    const auto popUp = add<NSPopUpButton>({20, 200, 120, 28});
    popUp->addItemsWithTitles({"One", "Two", "Three"});
    popUp->connect(actions, "onPress:");
    QTimer::singleShot(0, [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->setActiveAction(menu->actions().at(1));
        QTest::keyClick(menu, Qt::Key_Return);
    });
    world.click(*popUp);
    EXPECT_EQ(popUp->titleOfSelectedItem(), NSString("Two"));
    EXPECT_EQ(actions->log.take(), "pressed");
}

TEST_F(Mirror, aComboListOpensByMouseAndByKey) {
    const auto combo = add<NSComboBox>({20, 200, 160, 26});
    combo->addItemsWithObjectValues({"Mobile", "Home", "Work"});
    combo->connect(actions, "onPress:");
    const auto inList = [](const std::function<void(QMenu &)> &act) {
        QTimer::singleShot(0, [act] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            act(*menu);
        });
    };
    inList([](QMenu &menu) { QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.actions().at(1)).center()); });
    world.clickAt(*combo, {150, 13});   // on its arrow
    EXPECT_EQ(combo->stringValue(), NSString("Home"));
    EXPECT_EQ(actions->log.take(), "pressed");

    const auto toTheFront = [this] {   // a closed list does not do so offscreen
        surface->activateWindow();
        world.until([&] { return surface->isActiveWindow(); }, "an active window");
    };
    toTheFront();
    world.click(*combo);
    inList([this](QMenu &menu) {
        world.picture(menu, "combo-list");
        EXPECT_TRUE(menu.actions().at(1)->isChecked());
        menu.setActiveAction(menu.actions().at(1));
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    world.key(Qt::Key_Down);
    EXPECT_EQ(combo->stringValue(), NSString("Work"));
    EXPECT_EQ(combo->indexOfSelectedItem(), 2);
    toTheFront();
    inList([](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    world.key(Qt::Key_Down);
    EXPECT_EQ(combo->stringValue(), NSString("Work"));
    EXPECT_EQ(actions->log.take(), "pressed");
}

TEST_F(Mirror, anotherThemePaintsTheWindowAndItsEditorAnew) {
    const auto field = add<NSTextField>({20, 200, 200, 28});
    world.click(*field);
    world.type("Ada");
    EXPECT_GT(at(300, 200).lightness(), 200);
    host::Theme::use(host::ThemeKind::dark);
    EXPECT_LT(at(300, 200).lightness(), 60);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    EXPECT_GT(editor->palette().color(QPalette::Text).lightness(), 200);
    EXPECT_EQ(editor->text(), "Ada");
}

TEST_F(Mirror, resizingByAPersonIsTheToolkitsSizeAndTheOtherWayRound) {
    auto *native = surface->parentWidget();
    native->resize(500, 350);
    world.serve();
    EXPECT_EQ(window->contentView()->frame().size, (NSSize{500, 350}));
    window->setContentSize({420, 310});
    EXPECT_EQ(native->size(), QSize(420, 310));
    window->setTitle("Other");
    EXPECT_EQ(native->windowTitle(), "Other");
}

TEST_F(Mirror, theTitleBarAsksTheDelegate) {
    window->setDelegate(actions);
    actions->mayClose = false;
    surface->parentWidget()->close();
    EXPECT_TRUE(window->isVisible());
    actions->mayClose = true;
    surface->parentWidget()->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(actions->log.take(), "will close");
}

TEST_F(Mirror, aModalDialogServesTheQueueAndBlocksTheWindowBelow) {
    const auto below = add<NSButton>({20, 20, 100, 28});
    below->connect(actions, "onPress:");
    const auto dialog = make<NSWindow>(NSRect(0, 0, 200, 100));
    const auto ok = make<NSButton>(NSRect(50, 20, 80, 28));
    dialog->contentView()->addSubview(ok);
    EventLog &log = actions->log;
    std::int64_t code = 0;
    dispatch::async(dispatch::main(), [&] {
        log.add("opens");
        dispatch::async(dispatch::main(), [&] {
            log.add("served inside");
            world.click(*below);   // outside the run: dropped
            world.presenter().mirrorOf(*dialog)->close();
        });
        code = NSApp()->runModalForWindow(dialog);
        log.add("ended");
    });
    ASSERT_TRUE(world.until([&] { return code != 0; }, "the end of the run"));
    EXPECT_EQ(code, -1000);
    EXPECT_EQ(log.take(), "opens\nserved inside\nended");
    EXPECT_EQ(world.presenter().mirrorOf(*dialog), nullptr);
    world.click(*below);
    EXPECT_EQ(log.take(), "pressed");
}

TEST_F(Mirror, aWorkerThatFinishesAfterItsWindowClosedDoesNoHarm) {
    auto label = NSTextField::labelWithString("waiting");
    window->contentView()->addSubview(label);
    dispatch::Semaphore go(0);
    bool done = false;
    dispatch::async(dispatch::global(), [&] {
        go.wait();
        dispatch::async(dispatch::main(), [&done, label] {
            label->setStringValue("late");
            done = true;
        });
    });
    window->close();
    window = nullptr;
    go.signal();
    EXPECT_TRUE(world.until([&] { return done; }));
}

TEST_F(Mirror, aPanelTakesTheFilesOfADrop) {
    const auto panel = NSOpenPanel::openPanel();
    panel->allowedFileTypes = {"png"};
    world.picture(*surface, "before-panel");
    world.presenter().answerNextPanel({QStringLiteral(HN_BINARY_DIR "/screenshots/before-panel.png")});
    EXPECT_EQ(panel->runModal(), 1);
    EXPECT_EQ(panel->URL().lastPathComponent(), NSString("before-panel.png"));
    world.presenter().answerNextPanel({QStringLiteral(HN_BINARY_DIR "/CMakeCache.txt")});
    EXPECT_EQ(panel->runModal(), 0);   // of a kind that is not allowed
}

TEST_F(Mirror, aPanelsDialogIsCancelledByEscape) {
    const auto panel = NSOpenPanel::openPanel();
    dispatch::async(dispatch::main(), [&] { QTest::keyClick(world.presenter().openPanel(), Qt::Key_Escape); });
    EXPECT_EQ(panel->runModal(), 0);
}

TEST_F(Mirror, everyControlHasAName) {
    add<NSButton>({20, 20, 100, 28})->setTitle("Import");
    const auto field = add<NSTextField>({20, 200, 200, 28});
    field->setPlaceholderString("Search");
    field->setStringValue("Ada");
    const auto box = add<NSButton>({20, 100, 100, 20});
    box->setButtonType(NSButtonType::switchButton);
    EXPECT_EQ(host::accessibilityDump(*surface), "button \"Import\"\ntext field \"Search\" = Ada\ncheck box unnamed NSButton #\n");
    box->setAccessibilityName("All");
    EXPECT_EQ(host::accessibilityDump(*surface), "button \"Import\"\ntext field \"Search\" = Ada\ncheck box \"All\"\n");
}

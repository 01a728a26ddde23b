#include "tests/toolkit/views/ViewsWorld.h"

namespace {

using Modal = ViewsTest;

class Delegate : public NSObject, public NSWindowDelegate {
public:
    std::string log;
    bool closes = true;
    std::optional<std::int64_t> code;
    bool windowShouldClose(NSWindow &) override {
        log += "should;";
        return closes;
    }
    void windowWillClose(NSWindow &) override {
        log += "will;";
        if (code)
            NSApp()->stopModalWithCode(*code);
    }
};

TEST_F(Modal, eachWayOutGivesItsCode) {
    struct {
        const char *name;
        std::function<void(NSWindow &)> way;
        std::int64_t code;
    } rows[] = {
        {"aCode", [](NSWindow &) { NSApp()->stopModalWithCode(7); }, 7},
        {"theEndOfInput", [](NSWindow &) {}, -1000},
        {"stopModal", [](NSWindow &) { NSApp()->stopModal(); }, -1000},
        {"abortModal", [](NSWindow &) { NSApp()->abortModal(); }, -1001},
        {"titleBar", [](NSWindow &window) { window.performClose(); }, -1000},
        {"escape", [](NSWindow &window) { window.sendEvent(NSEvent::key(keycode::escape)); }, -1000},
        {"close", [](NSWindow &window) { window.close(); }, -1000},
        {"closeAndThenACode", [](NSWindow &window) { window.close(); NSApp()->stopModalWithCode(1); }, 1},
        {"theFirstCodeStands", [](NSWindow &) { NSApp()->stopModalWithCode(3); NSApp()->stopModal(); }, 3},
        {"aCodeAndThenClose", [](NSWindow &window) { NSApp()->stopModalWithCode(5); window.close(); }, 5},
        {"fromAnotherThread", [](NSWindow &) { dispatch::async(dispatch::global(), [] { NSApp()->stopModalWithCode(9); }); }, 9},
        {"closeFromAnotherThread",
            [](NSWindow &window) {
                dispatch::async(dispatch::global(), [held = std::static_pointer_cast<NSWindow>(window.shared_from_this())] { held->close(); });
            },
            -1000}};
    for (const auto &row : rows) {
        const auto shown = ViewsWorld::window("shown");
        world.presenter->answers.push_back([&] { row.way(*shown); });
        EXPECT_EQ(world.application->runModalForWindow(shown), row.code) << row.name;
        EXPECT_EQ(world.application->modalDepth(), 0u) << row.name;
    }
}

TEST_F(Modal, aRefusedCloseKeepsTheRunAndAWindowsOwnWillCloseSendsTheCode) {
    const auto delegate = make<Delegate>();
    delegate->closes = false;
    delegate->code = 1000;
    window->setDelegate(delegate);
    world.presenter->answers.push_back([&] {
        window->performClose();
        EXPECT_TRUE(window->isVisible());
        delegate->closes = true;
        window->performClose();
    });
    EXPECT_EQ(world.application->runModalForWindow(window), 1000);
    EXPECT_EQ(delegate->log, "should;should;will;");
}

TEST_F(Modal, stopEndsTheInnermostRunAlone) {
    const auto outer = ViewsWorld::window("outer"), inner = ViewsWorld::window("inner");
    std::int64_t innerCode = 0;
    world.presenter->answers.push_back([&] {
        innerCode = world.application->runModalForWindow(inner);
        EXPECT_TRUE(world.application->isModal(*outer));
        world.application->stopModalWithCode(1);
    });
    world.presenter->answers.push_back([&] {
        world.application->stopModalWithCode(2);
        world.application->stopModalWithCode(8);   // told already: must not reach the outer run
    });
    EXPECT_EQ(world.application->runModalForWindow(outer), 1);
    EXPECT_EQ(innerCode, 2);
    world.application->stopModal();   // nothing runs
    EXPECT_EQ(world.presenter->log, "modal outer;modal inner;ran inner;ran outer;");
}

TEST_F(Modal, anOuterRunThatClosedEndsAfterTheInner) {
    const auto outer = ViewsWorld::window("outer"), inner = ViewsWorld::window("inner");
    world.presenter->answers.push_back([&] { EXPECT_EQ(world.application->runModalForWindow(inner), 4); });
    world.presenter->answers.push_back([&] {
        outer->close();
        EXPECT_TRUE(world.application->isModal(*inner));
        world.application->stopModalWithCode(4);
    });
    EXPECT_EQ(world.application->runModalForWindow(outer), -1000);
}

TEST_F(Modal, aSessionGoesOnUntilItIsTold) {
    const NSModalSession session = world.application->beginModalSessionForWindow(window);
    const auto before = world.world.elapsed();
    EXPECT_EQ(world.application->runModalSession(session), -1002);
    EXPECT_EQ(world.world.elapsed() - before, std::chrono::milliseconds(50));
    dispatch::async(dispatch::main(), [&] { world.application->stopModalWithCode(1); });
    EXPECT_EQ(world.application->runModalSession(session), 1);
    EXPECT_EQ(world.application->runModalSession(session), 1);
    world.application->endModalSession(session);
    EXPECT_EQ(world.application->modalWindow(), nullptr);
}

TEST_F(Modal, withoutAPresenterEverythingIsCancelled) {
    Presenter::install(nullptr);
    const auto stubborn = ViewsWorld::window("w");
    const auto delegate = make<Delegate>();
    delegate->closes = false;
    stubborn->setDelegate(delegate);
    EXPECT_EQ(world.application->runModalForWindow(ViewsWorld::window("v")), -1000);
    EXPECT_EQ(world.application->runModalForWindow(stubborn), -1001);
    EXPECT_EQ(NSOpenPanel::openPanel()->runModal(), kPanelCancel);
}

TEST_F(Modal, eventsForAWindowBelowAreDropped) {
    const auto below = ViewsWorld::window("below"), modal = ViewsWorld::window("modal");
    below->orderFront();
    int clicks = 0;
    class Counter : public NSView {
    public:
        int *clicks = nullptr;
        void mouseDown(NSEvent &) override { ++*clicks; }
    };
    const auto view = make<Counter>();
    view->clicks = &clicks;
    below->setContentView(view);
    const auto press = NSEvent::mouse(NSEventType::leftMouseDown, {5, 5});
    below->sendEvent(press);
    world.presenter->answers.push_back([&] {
        below->sendEvent(press);
        world.application->stopModal();
    });
    world.application->runModalForWindow(modal);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Modal, mainAndKeyComeBackAfterADialog) {
    const auto host = ViewsWorld::window("host"), dialog = ViewsWorld::window("dialog");
    host->makeKeyAndOrderFront();
    world.presenter->answers.push_back([&] {
        EXPECT_EQ(world.application->keyWindow(), dialog);
        EXPECT_EQ(world.application->mainWindow(), host);
        dialog->close();
    });
    world.application->runModalForWindow(dialog);
    EXPECT_EQ(world.application->keyWindow(), host);
    EXPECT_EQ(world.application->orderedWindows(), std::vector{host});
}

}  // namespace

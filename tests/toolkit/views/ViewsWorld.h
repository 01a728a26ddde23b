// A test's world with an application of its own, and a presenter that notes what opens.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>

#include "tests/support/TestWorld.h"
#include "toolkit/services/NSNotificationCenter.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSMenu.h"
#include "toolkit/views/NSSavePanel.h"
#include "toolkit/views/Presenter.h"

// Answers, in order, one per window or panel that opens modally; each runs as a block of the main queue.
class ScriptedPresenter : public Presenter {
public:
    std::deque<std::function<void()>> answers;
    std::int64_t menuChoice = -1;
    std::string log;

    void windowDidOpen(NSWindow &window, bool modal) override {
        log += std::string(modal ? "modal " : "open ") + window.title().str() + ";";
        if (modal)
            next();
    }
    void windowDidClose(NSWindow &window) override { log += "gone " + window.title().str() + ";"; }
    void modalRunDidEnd(NSWindow &window) override { log += "ran " + window.title().str() + ";"; }
    void panelDidOpen(NSSavePanel &) override {
        log += "panel;";
        next();
    }
    std::shared_ptr<NSMenuItem> popUpMenu(const std::shared_ptr<NSMenu> &menu, NSPoint, const std::shared_ptr<NSView> &) override {
        return menu->itemAtIndex(menuChoice);
    }

private:
    void next() {
        if (answers.empty())
            return;
        auto answer = std::move(answers.front());
        answers.pop_front();
        dispatch::async(dispatch::main(), std::move(answer));
    }
};

struct ViewsWorld {
    TestWorld world;
    std::shared_ptr<ScriptedPresenter> presenter = std::make_shared<ScriptedPresenter>();
    std::shared_ptr<NSApplication> application;

    ViewsWorld() {
        application = NSApplication::sharedApplication();
        Presenter::install(presenter);
    }
    ~ViewsWorld() {
        Presenter::install(nullptr);
        NSNotificationCenter::defaultCenter().reset();
        application.reset();
    }
    [[nodiscard]] static std::shared_ptr<NSWindow> window(const char *title) {
        const auto window = make<NSWindow>(NSRect(0, 0, 200, 100));
        window->setTitle(title);
        return window;
    }
};

// Each test in a world of its own, with a window "w" at hand.
class ViewsTest : public testing::Test {
protected:
    ViewsWorld world;
    std::shared_ptr<NSWindow> window = ViewsWorld::window("w");
};

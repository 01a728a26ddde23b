#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TestWorld.h"
#include "toolkit/views/NSApplication.h"

namespace {

using Window = std::shared_ptr<RUIProgressWindowController>;

struct WindowWorld {
    TestWorld world;
    WindowWorld() { NSApplication::resetShared(); }
    ~WindowWorld() { NSApplication::resetShared(); }
};

TEST(ProgressWindow, asksItsBlockBeforeATitleBarClosesIt) {
    WindowWorld world;
    AnswerScript answers;
    int asked = 0;
    answers.at("Working").closeByTitleBar().closeByTitleBar();
    RUIProgressWindowController::showWindow([&](const Window &window) {
        window->mainLabel()->setStringValue("Working");
        window->setWindowWillCloseBlock([&] { return ++asked == 2; });
    });
    EXPECT_EQ(asked, 2);
}

TEST(ProgressWindow, tellsWhichButtonWasPressed) {
    WindowWorld world;
    AnswerScript answers;
    std::string pressed;
    answers.at("Working").press("Open").press("Cancel");
    RUIProgressWindowController::showWindow([&](const Window &window) {
        window->mainLabel()->setStringValue("Working");
        window->colorButton()->setTitle("Open");
        window->borderButton()->setTitle("Cancel");
        window->setButtonDidClickBlock([&, link = std::weak_ptr(window)](const std::shared_ptr<NSButton> &button) {
            pressed += button->title().str() + ";";
            if (button == link.lock()->borderButton())
                link.lock()->close();
        });
    });
    EXPECT_EQ(pressed, "Open;Cancel;");
}

TEST(ProgressWindow, forgetsItsBlocksAndHearsNoLateWorkerOnceClosed) {
    WindowWorld world;
    AnswerScript answers;
    Window late;
    std::weak_ptr<int> held;
    answers.at("Working").closeByTitleBar();
    RUIProgressWindowController::showWindow([&](const Window &window) {
        late = window;
        window->mainLabel()->setStringValue("Working");
        const auto owned = std::make_shared<int>(0);
        held = owned;
        window->setButtonDidClickBlock([owned, window](const auto &) {});   // a ring, as flows make it
        window->setWindowWillCloseBlock([owned] { return true; });
    });
    EXPECT_TRUE(held.expired());
    late->mainLabel()->setStringValue("Too late");
    EXPECT_EQ(late->mainText(), NSString("Working"));
    const auto shown = std::dynamic_pointer_cast<NSTextField>(late->window()->contentView()->viewWithIdentifier("mainLabel"));
    EXPECT_EQ(shown->stringValue(), NSString("Working"));
}

TEST(ProgressWindow, isClosedWhenItsRunIsStoppedFromOutside) {
    WindowWorld world;
    AnswerScript answers;
    Window kept;
    answers.at("Working").run([] { NSApp()->stopModal(); });
    RUIProgressWindowController::showWindow([&](const Window &window) {
        kept = window;
        window->mainLabel()->setStringValue("Working");
    });
    EXPECT_TRUE(kept->isClosed());
    EXPECT_FALSE(kept->window()->isVisible());
}

TEST(ProgressWindow, standsAloneWithItsLoadBlock) {
    WindowWorld world;
    AnswerScript answers;
    const auto window = make<RUIProgressWindowController>();
    window->setWindowDidLoadBlock([](const Window &loaded) { loaded->mainLabel()->setStringValue("Thumbnails"); });
    window->window()->makeKeyAndOrderFront();
    EXPECT_EQ(window->mainText(), NSString("Thumbnails"));
    EXPECT_TRUE(window->window()->isMemberOf<RUIWindow>());
    EXPECT_EQ(NSApp()->modalDepth(), 0u);
    answers.at("Thumbnails").closeByTitleBar();
    world.world.settle();
    EXPECT_TRUE(window->isClosed());
}

}  // namespace

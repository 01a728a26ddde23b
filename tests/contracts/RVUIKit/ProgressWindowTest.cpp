#include <gtest/gtest.h>

#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"
#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "tests/support/AnswerScript.h"
#include "tests/support/TestWorld.h"
#include "toolkit/views/NSApplication.h"

namespace {

using Window = std::shared_ptr<RUIProgressWindowController>;

class ProgressWindow : public testing::Test {
protected:
    // Shows a window that says "Working" until it is closed.
    void show(const std::function<void(const Window &)> &prepare) {
        RUIProgressWindowController::showWindow([&](const Window &window) {
            window->mainLabel()->setStringValue("Working");
            prepare(window);
        });
    }
    TestWorld world;
    AnswerScript answers;
};

TEST_F(ProgressWindow, asksItsBlockBeforeATitleBarClosesIt) {
    int asked = 0;
    answers.at("Working").closeByTitleBar().closeByTitleBar();
    show([&](const Window &window) { window->setWindowWillCloseBlock([&] { return ++asked == 2; }); });
    EXPECT_EQ(asked, 2);
}

TEST_F(ProgressWindow, forgetsItsBlocksAndHearsNoLateWorkerOnceClosed) {
    Window late;
    std::weak_ptr<int> held;
    answers.at("Working").closeByTitleBar();
    show([&](const Window &window) {
        late = window;
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

TEST_F(ProgressWindow, isClosedWhenItsRunIsStoppedFromOutside) {
    Window kept;
    answers.at("Working").run([] { NSApp()->stopModal(); });
    show([&](const Window &window) { kept = window; });
    EXPECT_TRUE(kept->isClosed());
    EXPECT_FALSE(kept->window()->isVisible());
}

TEST_F(ProgressWindow, standsAloneWithItsLoadBlock) {
    const auto window = make<RUIProgressWindowController>();
    window->setWindowDidLoadBlock([](const Window &loaded) { loaded->mainLabel()->setStringValue("Thumbnails"); });
    window->window()->makeKeyAndOrderFront();
    EXPECT_EQ(window->mainText(), NSString("Thumbnails"));
    EXPECT_TRUE(window->window()->isMemberOf<RUIWindow>());
    EXPECT_EQ(NSApp()->modalDepth(), 0u);
    answers.at("Thumbnails").closeByTitleBar();
    world.settle();
    EXPECT_TRUE(window->isClosed());
}

}  // namespace

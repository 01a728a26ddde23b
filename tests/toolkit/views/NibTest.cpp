#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSViewController.h"
#include "toolkit/views/NSWindowController.h"

namespace {

std::string journal;

class Manager : public NSObject {
public:
    std::string name;
    void awakeFromNib() override { journal += "awake " + name + ";"; }
    void dealloc() override { journal += "end " + name + ";"; }
};

class PaneController : public NSViewController {
public:
    std::weak_ptr<Manager> manager;
    void loadView() override {
        NSViewController::loadView();
        journal += "loadView;";
    }
    void viewDidLoad() override { journal += isViewLoaded() && view() ? "viewDidLoad;" : "too early;"; }
    void awakeFromNib() override { journal += "awake owner;"; }
};

class DialogController : public NSWindowController {
public:
    void windowDidLoad() override { journal += "windowDidLoad " + window()->title().str() + ";"; }
};

class Nibs : public testing::Test {
protected:
    void SetUp() override {
        journal.clear();
        NibRegistry::add("Pane", [](Nib &nib) {
            journal += "build;";
            for (const char *name : {"first", "second"}) {
                const auto manager = nib.make<Manager>();
                manager->name = name;
                nib.owner<PaneController>()->manager = manager;
            }
            nib.setView(nib.make<NSView>(NSRect(0, 0, 30, 20)));
        });
        NibRegistry::add("Dialog", [](Nib &nib) {
            const auto window = nib.make<NSWindow>();
            window->setTitle("made");
            nib.setWindow(window);
        });
    }
    void TearDown() override {
        NibRegistry::remove("Pane");
        NibRegistry::remove("Dialog");
    }
    ViewsWorld world;
};

TEST_F(Nibs, runAtTheFirstViewInOrder) {
    auto controller = make<PaneController>(NSString("Pane"));
    EXPECT_EQ(journal, "");
    EXPECT_EQ(describe(controller->view()->frame()), "[0,0 30x20]");
    EXPECT_EQ(std::exchange(journal, ""), "build;awake first;awake second;awake owner;loadView;viewDidLoad;");
    (void)controller->view();
    EXPECT_EQ(journal, "");
    EXPECT_FALSE(controller->manager.expired());
    controller.reset();
    EXPECT_EQ(journal, "end first;end second;");
}

TEST_F(Nibs, anUnknownOneShowsALineAndIsLoggedOnce) {
    int lines = 0;
    setLogSink([&](const NSString &) { ++lines; });
    for (int i = 0; i < 2; ++i) {
        const auto controller = make<NSViewController>(NSString("HNMNowhereViewController"));
        ASSERT_EQ(controller->view()->subviews().size(), 1u);
        EXPECT_TRUE(std::static_pointer_cast<NSTextField>(controller->view()->subviews()[0])->stringValue().containsString("HNMNowhereViewController"));
    }
    EXPECT_EQ(lines, 1);
    setLogSink({});
}

TEST_F(Nibs, aWindowComesWhenItIsFirstAskedFor) {
    const auto controller = make<DialogController>(NSString("Dialog"));
    EXPECT_FALSE(controller->isWindowLoaded());
    controller->showWindow();
    EXPECT_EQ(journal, "windowDidLoad made;");
    EXPECT_TRUE(controller->window()->isVisible());
    EXPECT_EQ(controller->window()->windowController(), controller);
    controller->close();
    EXPECT_FALSE(controller->window()->isVisible());
}

}  // namespace

#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/views/NSTextField.h"

namespace {

using Window = ViewsTest;

class Watcher : public NSObject, public NSWindowDelegate {
public:
    std::string log;
    void windowWillClose(NSWindow &window) override {
        log += "delegate;";
        window.close();   // must not begin anew
    }
    void closed(std::shared_ptr<NSNotification> notice) { log += "notice " + std::static_pointer_cast<NSWindow>(notice->object)->title().str() + ";"; }
    void pressed(std::shared_ptr<NSObject>) { log += "pressed;"; }
    HN_DECLARE_CLASS_TABLE
};
HN_CLASS_TABLE(Watcher, NSObjectTable, .selector("closed:", &Watcher::closed).selector("pressed:", &Watcher::pressed))

TEST_F(Window, closesInOrderAndOnce) {
    const auto watcher = make<Watcher>();
    window->setDelegate(watcher);
    NSNotificationCenter::defaultCenter().addObserver_selector_name_object(watcher, "closed:", NSWindowWillCloseNotification, window);
    window->makeKeyAndOrderFront();
    window->close();
    window->close();
    EXPECT_EQ(watcher->log, "delegate;notice w;");
    EXPECT_EQ(world.presenter->log, "open w;gone w;");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Window, aHiddenOrDisabledCloseButtonClosesNothing) {
    window->orderFront();
    window->standardWindowButton(NSWindowCloseButton)->setHidden(true);
    window->performClose();
    EXPECT_TRUE(window->isVisible());
    window->standardWindowButton(NSWindowCloseButton)->setHidden(false);
    window->standardWindowButton(NSWindowCloseButton)->setEnabled(false);
    window->performClose();
    EXPECT_TRUE(window->isVisible());
    window->standardWindowButton(NSWindowCloseButton)->setEnabled(true);
    window->standardWindowButton(NSWindowCloseButton)->performClick();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->standardWindowButton(3), nullptr);
}

// Notes each event as a word; passes on unless told to swallow.
class Noter : public NSView {
public:
    std::string *log = nullptr;
    bool swallows = false;
    void mouseDown(NSEvent &event) override {
        *log += identifier().str() + ".down" + std::to_string(event.clickCount) + ";";
        EXPECT_EQ(NSApp()->currentEvent().get(), &event);
        if (!swallows)
            NSView::mouseDown(event);
    }
    void mouseUp(NSEvent &) override { *log += identifier().str() + ".up;"; }
    void mouseDragged(NSEvent &) override { *log += identifier().str() + ".drag;"; }
    void mouseEntered(NSEvent &) override { *log += identifier().str() + ".in;"; }
    void mouseExited(NSEvent &) override { *log += identifier().str() + ".out;"; }
};

TEST_F(Window, mouseEventsGoToTheViewPressedAndUpTheChain) {
    std::string log;
    const auto outer = make<Noter>(NSRect(0, 0, 100, 100)), inner = make<Noter>(NSRect(10, 10, 20, 20));
    for (const auto &[view, name] : {std::pair(outer, "outer"), std::pair(inner, "inner")}) {
        view->log = &log;
        view->setIdentifier(name);
        view->addTrackingArea(make<NSTrackingArea>(NSRect(), view));
    }
    window->contentView()->addSubview(outer);
    outer->addSubview(inner);
    const auto send = [&](NSEventType type, double x, double y, int clicks = 1) { window->sendEvent(NSEvent::mouse(type, {x, y}, clicks)); };
    send(NSEventType::leftMouseDown, 15, 15, 2);
    send(NSEventType::leftMouseDragged, 90, 90);
    send(NSEventType::leftMouseUp, 190, 90);
    EXPECT_EQ(std::exchange(log, ""), "inner.down2;outer.down2;inner.drag;inner.up;");
    inner->swallows = true;
    send(NSEventType::leftMouseDown, 15, 15);
    EXPECT_EQ(std::exchange(log, ""), "inner.down1;");
    send(NSEventType::mouseMoved, 50, 50);
    send(NSEventType::mouseMoved, 15, 15);
    send(NSEventType::mouseMoved, 16, 16);
    inner->setHidden(true);
    send(NSEventType::mouseMoved, 16, 16);
    send(NSEventType::mouseExited, 300, 300);
    EXPECT_EQ(log, "outer.in;inner.in;inner.out;outer.out;");
    EXPECT_EQ(NSApp()->currentEvent(), nullptr);
}

TEST_F(Window, keysFindTheFieldTheDefaultButtonAndTheNextField) {
    const auto watcher = make<Watcher>();
    const auto first = make<NSTextField>(NSRect(0, 50, 50, 20)), second = make<NSTextField>(NSRect(0, 20, 50, 20));
    const auto ok = make<NSButton>(NSRect(60, 0, 50, 20));
    ok->setKeyEquivalent("\r");
    ok->connect(watcher, "pressed:");
    for (const auto &view : NSView::List{first, second, ok})
        window->contentView()->addSubview(view);
    EXPECT_TRUE(window->makeFirstResponder(first));
    window->sendEvent(NSEvent::key(0, "h"));
    window->sendEvent(NSEvent::key(0, "i"));
    window->sendEvent(NSEvent::key(keycode::tab, "\t"));
    window->sendEvent(NSEvent::key(0, "o"));
    window->sendEvent(NSEvent::key(keycode::returnKey, "\r"));
    EXPECT_EQ(first->stringValue(), "hi");
    EXPECT_EQ(second->stringValue(), "o");
    EXPECT_EQ(watcher->log, "pressed;");
    ok->setEnabled(false);
    window->sendEvent(NSEvent::key(keycode::returnKey, "\r"));
    EXPECT_EQ(watcher->log, "pressed;");
    second->removeFromSuperview();
    EXPECT_EQ(window->firstResponder(), window);
}

TEST_F(Window, hostsHearOfEachChange) {
    class Mirror : public ViewObserver {
    public:
        std::string log;
        void frameChanged(NSView &view) override { log += "frame " + describe(view.frame()) + ";"; }
        void subviewsChanged(NSView &view) override { log += "subviews " + std::to_string(view.subviews().size()) + ";"; }
        void propertyChanged(NSView &, std::string_view key) override { log += std::string(key) + ";"; }
        void windowChanged(NSWindow &, std::string_view key) override { log += "window " + std::string(key) + ";"; }
    };
    const auto mirror = std::make_shared<Mirror>();
    ViewObserver::add(mirror);
    const auto field = make<NSTextField>();
    window->contentView()->addSubview(field);
    field->setFrame({1, 2, 3, 4});
    field->setFrame({1, 2, 3, 4});
    field->setStringValue("x");
    field->setStringValue("x");
    field->removeFromSuperview();
    window->orderFront();
    EXPECT_EQ(mirror->log, "subviews 1;frame [1,2 3x4];stringValue;subviews 0;window visible;");
}

}  // namespace

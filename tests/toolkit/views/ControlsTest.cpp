#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSPopUpButton.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSSegmentedControl.h"
#include "toolkit/views/NSTextField.h"

namespace {

using Button = ViewsTest;
using TextField = ViewsTest;
using Controls = ViewsTest;
using Menu = ViewsTest;

class Target : public NSObject, public NSTextFieldDelegate, public NSComboBoxDataSource {
public:
    std::string log;
    void onButton(std::shared_ptr<NSObject> sender) { log += "button " + sender->className().str() + ";"; }
    void onItem(std::shared_ptr<NSMenuItem> item) { log += "item " + item->title.str() + ";"; }
    void onFail(std::shared_ptr<NSObject>) { throw std::runtime_error("broken"); }
    void controlTextDidChange(NSTextField &field) override { log += "changed " + field.stringValue().str() + ";"; }
    void controlTextDidEndEditing(NSTextField &, TextMovement movement) override { log += "ended " + std::to_string(int(movement)) + ";"; }
    void textField_clickedOnLink(NSTextField &, const NSString &link) override { log += "link " + link.str() + ";"; }
    std::int64_t numberOfItemsInComboBox(NSComboBox &) override { return 2; }
    NSString comboBox_objectValueForItemAtIndex(NSComboBox &, std::int64_t index) override { return index ? "+1 555" : "All"; }
    HN_DECLARE_CLASS_TABLE
};
HN_CLASS_TABLE(Target, NSObjectTable, .selector("onButton:", &Target::onButton).selector("onItem:", &Target::onItem).selector("onFail:", &Target::onFail))

TEST_F(Button, stepsThroughItsStates) {
    struct Row {
        NSButtonType type;
        bool mixed;
        std::vector<int> states;
    };
    const Row rows[] = {{NSButtonType::momentaryPushIn, false, {0, 0, 0}}, {NSButtonType::switchButton, false, {1, 0, 1}},
                        {NSButtonType::switchButton, true, {-1, 1, 0}}, {NSButtonType::radio, false, {1, 1, 1}}};
    for (const Row &row : rows) {
        const auto button = make<NSButton>();
        button->setButtonType(row.type);
        button->setAllowsMixedState(row.mixed);
        for (const int state : row.states) {
            button->performClick();
            EXPECT_EQ(button->state(), state) << "row " << &row - rows;
        }
    }
    const auto box = make<NSButton>();
    box->setState(-1);
    EXPECT_EQ(box->state(), 1);
}

TEST_F(Button, sendsItsActionFromClicksInsideAlone) {
    const auto target = make<Target>();
    const auto button = make<NSButton>(NSRect(10, 10, 50, 20));
    button->connect(target, "onButton:");
    window->contentView()->addSubview(button);
    const auto click = [&](NSPoint down, NSPoint up) {
        window->sendEvent(NSEvent::mouse(NSEventType::leftMouseDown, down));
        window->sendEvent(NSEvent::mouse(NSEventType::leftMouseUp, up));
        return std::exchange(target->log, "");
    };
    EXPECT_EQ(click({20, 20}, {21, 21}), "button NSButton;");
    EXPECT_EQ(click({20, 20}, {90, 90}), "");
    button->setEnabled(false);
    EXPECT_EQ(click({20, 20}, {21, 21}), "");
    button->setEnabled(true);
    window->contentView()->setHidden(true);
    button->performClick();
    EXPECT_EQ(target->log, "");
}

TEST_F(Controls, aFailingActionEndsItselfAlone) {
    const auto target = make<Target>();
    const auto button = make<NSButton>();
    button->connect(target, "onFail:");
    EXPECT_TRUE(button->sendAction());
    EXPECT_EQ(world.world.takeFailures(), std::vector<std::string>{"the action onFail:: broken"});
    button->setAction("unknown:");
    EXPECT_FALSE(button->sendAction());
    button->connect(make<Target>(), "onButton:");   // gone at once
    EXPECT_FALSE(button->sendAction());
}

TEST_F(TextField, tellsATypistsDoingAlone) {
    const auto target = make<Target>();
    const auto field = make<NSTextField>();
    field->setDelegate(target);
    field->connect(target, "onButton:");
    field->setStringValue("set");
    EXPECT_EQ(target->log, "");
    field->typeText("ty");
    field->endEditing(TextMovement::returnKey);
    field->endEditing();
    EXPECT_EQ(std::exchange(target->log, ""), "changed ty;ended 1;button NSTextField;");
    field->typeText("other");
    field->abortEditing();
    EXPECT_EQ(field->stringValue(), "ty");
    field->setEditable(false);
    field->typeText("no");
    EXPECT_EQ(field->stringValue(), "ty");
}

TEST_F(TextField, itsLinksAreClicked) {
    const auto target = make<Target>();
    const auto text = make<NSMutableAttributedString>(NSString("See help now"));
    text->setLink("http://help", {4, 4});
    const auto field = NSTextField::labelWithString("");
    field->setFrame({0, 0, 200, 20});
    field->setDelegate(target);
    field->setAttributedStringValue(text);
    window->contentView()->addSubview(field);
    for (const double x : {25.9, 26.0, 51.9, 52.0})   // 6.5 points a character
        window->sendEvent(NSEvent::mouse(NSEventType::leftMouseDown, {x, 5}));
    EXPECT_EQ(target->log, "link http://help;link http://help;");
    field->setStringValue("See help now");
    EXPECT_FALSE(field->clickLink(0));
}

TEST_F(Controls, aComboBoxChoosesFromItsDataSource) {
    const auto target = make<Target>();
    const auto combo = make<NSComboBox>();
    combo->setUsesDataSource(true);
    combo->setDataSource(target);
    combo->connect(target, "onButton:");
    EXPECT_TRUE(combo->chooseItemAtIndex(1));
    EXPECT_EQ(combo->stringValue(), "+1 555");
    EXPECT_FALSE(combo->chooseItemAtIndex(2));
    combo->selectItemAtIndex(0);
    EXPECT_EQ(combo->stringValue(), "All");
    EXPECT_EQ(target->log, "button NSComboBox;");
}

TEST_F(Controls, aPopUpButtonChoosesThroughThePresenter) {
    const auto target = make<Target>();
    const auto button = make<NSPopUpButton>();
    button->connect(target, "onButton:");
    button->addItemsWithTitles({"A", "B", "C"});
    EXPECT_EQ(button->titleOfSelectedItem(), "A");
    world.presenter->menuChoice = 2;
    button->performClick();
    EXPECT_EQ(button->titleOfSelectedItem(), "C");
    button->itemArray()[1]->enabled = false;
    EXPECT_FALSE(button->chooseItemAtIndex(1));
    EXPECT_EQ(target->log, "button NSPopUpButton;");
}

TEST_F(Controls, keepTheirValuesInside) {
    const auto bar = make<NSProgressIndicator>();
    bar->setDoubleValue(140);
    EXPECT_EQ(bar->doubleValue(), 100);
    bar->setDoubleValue(0.0 / 0.0);
    EXPECT_EQ(bar->doubleValue(), 0);
    const auto segments = make<NSSegmentedControl>();
    segments->setSegmentCount(2);
    segments->setEnabled_forSegment(false, 1);
    EXPECT_FALSE(segments->chooseSegment(1));
    EXPECT_TRUE(segments->chooseSegment(0));
    segments->setSelectedSegment(5);
    EXPECT_EQ(segments->selectedSegment(), -1);
}

TEST_F(Controls, aLayerKeepsEndStatesAndRecordsTheRest) {
    const auto view = make<NSView>(NSRect(0, 0, 40, 20));
    view->setWantsLayer(true);
    const auto turn = CABasicAnimation::animationWithKeyPath("transform.rotation.z");
    turn->toValue = -6.2831855;
    view->layer()->addAnimation_forKey(turn, "RotationAnimation");
    EXPECT_EQ(view->layer()->animationForKey("RotationAnimation"), turn);
    view->layer()->removeAnimationForKey("RotationAnimation");
    EXPECT_EQ(view->layer()->animationForKey("RotationAnimation"), nullptr);
    view->animator().setFrame({5, 5, 40, 20});
    EXPECT_EQ(describe(view->frame()), "[5,5 40x20]");
    EXPECT_EQ(view->takeAnimatorRecords().size(), 1u);
    EXPECT_TRUE(view->takeAnimatorRecords().empty());
    view->layer()->setBorderColor(NSColor::colorWithSRGBRed_green_blue_alpha(240 / 255.0, 240 / 255.0, 240 / 255.0, 240 / 255.0));
    view->layer()->setBorderWidth(1);
    RecordingCanvas canvas;
    view->displaySelf(canvas);
    EXPECT_EQ(canvas.take(), "save\nstroke [0,0 40x20] #F0F0F0F0 1\nrestore\n");
}

TEST_F(Menu, performsTheEntryChosenForARightClick) {
    const auto target = make<Target>();
    const auto menu = make<NSMenu>(NSString("context"));
    for (const char *title : {"Export", "Delete"})
        menu->addItemWithTitle_action_keyEquivalent(title, "onItem:")->target = target;
    menu->insertItem_atIndex(NSMenuItem::separatorItem(), 1);
    window->contentView()->setMenu(menu);
    for (world.presenter->menuChoice = -1; world.presenter->menuChoice < 3; ++world.presenter->menuChoice)
        window->sendEvent(NSEvent::mouse(NSEventType::rightMouseDown, {5, 5}));
    EXPECT_EQ(target->log, "item Export;item Delete;");
    menu->itemAtIndex(0)->enabled = false;
    EXPECT_FALSE(menu->performActionForItemAtIndex(0));
    EXPECT_EQ(menu->toString(), "Export disabled\n---\nDelete\n");
}

TEST_F(Menu, endsAtAnyDepth) {
    const auto root = make<NSMenu>(NSString("root"));
    std::weak_ptr<NSMenu> deepest;
    {
        auto menu = root;
        for (int level = 0; level < 100'000; ++level) {
            const auto item = menu->addItemWithTitle_action_keyEquivalent("more", "");
            item->setSubmenu(make<NSMenu>(NSString("sub")));
            menu = item->submenu();
        }
        deepest = menu;
    }
    const auto kept = root->itemAtIndex(0);
    root->removeAllItems();
    EXPECT_FALSE(deepest.expired());
    kept->setSubmenu(nullptr);
    EXPECT_TRUE(deepest.expired());
}

}  // namespace

#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSStackView.h"
#include "toolkit/views/NSTextField.h"

namespace {

using A = NSLayoutAttribute;

struct Tie {
    char first;   // 'a' or 'b', direct subviews; 'p' the parent; '-' none
    A firstAttribute;
    char second;
    A secondAttribute;
    double constant = 0, multiplier = 1, priority = 1000;
};

using Layout = ViewsTest;
using Stack = ViewsTest;

TEST_F(Layout, placesTheViewsAsTheirConstraintsSay) {
    const NSRect kA(1, 2, 10, 20), kB(3, 4, 30, 40);
    struct {
        const char *name;
        std::vector<Tie> ties;
        NSRect a, b;
    } rows[] = {   // parent 100 by 80, y up
        {"noneKeepsTheFrames", {}, kA, kB},
        {"fourEdgesFillTheParent",
            {{'a', A::left, 'p', A::left}, {'a', A::right, 'p', A::right}, {'a', A::bottom, 'p', A::bottom}, {'a', A::top, 'p', A::top}},
            {0, 0, 100, 80}, kB},
        {"topCountsDownInAnUnflippedParent", {{'a', A::top, 'p', A::top, 60}, {'a', A::bottom, 'p', A::bottom, -5}}, {1, 5, 10, 15}, kB},
        {"oneEdgeMovesAndKeepsTheSize", {{'a', A::right, 'p', A::right, -14}}, {76, 2, 10, 20}, kB},
        {"siblingsFollow", {{'a', A::left, 'p', A::left, 5}, {'b', A::left, 'a', A::right, 8}}, {5, 2, 10, 20}, {23, 4, 30, 40}},
        {"partOfTheParentsWidth", {{'a', A::width, 'p', A::width, 1, 0.5}}, {1, 2, 51, 20}, kB},
        {"middle", {{'a', A::centerX, 'p', A::centerX}, {'a', A::centerY, 'p', A::centerY, 10}}, {45, 20, 10, 20}, kB},
        {"squareByAspectKeepsTheUpperEdge", {{'a', A::width, '-', A::notAnAttribute, 24}, {'a', A::height, 'a', A::width}}, {1, -2, 24, 24}, kB},
        {"theFirstOfTwoThatContradictStands", {{'a', A::left, 'p', A::left, 7}, {'a', A::left, 'p', A::left, 9}}, {7, 2, 10, 20}, kB},
        {"aHigherPriorityWinsThoughLater", {{'a', A::left, 'p', A::left, 7, 1, 500}, {'a', A::left, 'p', A::left, 9}}, {9, 2, 10, 20}, kB},
        {"aNegativeWidthIsNone", {{'a', A::left, 'p', A::left, 60}, {'a', A::right, 'p', A::left, 50}}, {60, 2, 0, 20}, kB}};
    for (const auto &row : rows) {
        const auto parent = make<NSView>(NSRect(0, 0, 100, 80)), a = make<NSView>(kA), b = make<NSView>(kB);
        for (const auto &view : {a, b}) {
            view->setTranslatesAutoresizingMaskIntoConstraints(false);
            parent->addSubview(view);
        }
        const auto item = [&](char name) { return name == 'a' ? a : name == 'b' ? b : name == 'p' ? parent : nullptr; };
        for (const Tie &tie : row.ties) {
            const auto constraint = NSLayoutConstraint::tie(item(tie.first), tie.firstAttribute, item(tie.second), tie.secondAttribute,
                                                            tie.constant, tie.multiplier);
            constraint->setPriority(tie.priority);
            constraint->setActive(true);
        }
        EXPECT_EQ(describe(a->frame()), describe(row.a)) << row.name;
        EXPECT_EQ(describe(b->frame()), describe(row.b)) << row.name;
    }
}

TEST_F(Layout, followsTheParentsSizeAndEndsWithTheConstraint) {
    const auto parent = make<NSView>(NSRect(0, 0, 100, 80)), child = make<NSView>();
    parent->addSubview(child);
    parent->pinEdgesOf(child);
    parent->setFrameSize({300, 200});
    EXPECT_EQ(describe(child->frame()), "[0,0 300x200]");
    for (const auto &constraint : std::vector(parent->constraints()))
        parent->removeConstraint(constraint);
    parent->setFrameSize({10, 10});
    EXPECT_EQ(describe(child->frame()), "[0,0 300x200]");
}

TEST_F(Layout, whatStandsInAChildNeverHoldsTheChildBack) {
    const auto parent = make<NSView>(NSRect(0, 0, 400, 80)), pane = make<NSView>(NSRect(0, 0, 100, 80)), label = make<NSView>(NSRect(0, 0, 20, 20));
    pane->addSubview(label);
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    pane->addConstraint(NSLayoutConstraint::tie(label, A::left, pane, A::left, 12));
    pane->setTranslatesAutoresizingMaskIntoConstraints(false);
    parent->addSubview(pane);
    parent->addConstraint(NSLayoutConstraint::tie(pane, A::right, parent, A::right));
    pane->addConstraint(NSLayoutConstraint::tie(pane, A::width, nullptr, A::notAnAttribute, 150));
    EXPECT_EQ(describe(pane->frame()), "[250,0 150x80]");
    EXPECT_EQ(label->frame().minX(), 12);
}

TEST_F(Layout, aRemovedViewTakesItsConstraintsAlong) {
    const auto parent = make<NSView>(NSRect(0, 0, 100, 80)), child = make<NSView>(), other = make<NSView>();
    parent->addSubview(child);
    parent->addSubview(other);
    parent->pinEdgesOf(child);
    parent->pinEdgesOf(other);
    const auto kept = parent->constraints().front();
    child->removeFromSuperview();
    EXPECT_EQ(parent->constraints().size(), 4u);
    EXPECT_FALSE(kept->isActive());
}

TEST_F(Layout, logsAConstraintThatCannotBeMetOnce) {
    int lines = 0;
    setLogSink([&](const NSString &) { ++lines; });
    const auto parent = make<NSView>(NSRect(0, 0, 100, 80)), child = make<NSView>();
    parent->addSubview(child);
    parent->pinEdgesOf(child);
    parent->addConstraint(NSLayoutConstraint::tie(child, A::left, parent, A::left, 3));
    parent->setFrameSize({50, 50});
    EXPECT_EQ(lines, 1);
    setLogSink({});
}

TEST_F(Layout, mirrorsLeadingAndTrailingAlone) {
    world.application->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::rightToLeft);
    const auto parent = make<NSView>(NSRect(0, 0, 100, 80)), a = make<NSView>(NSRect(0, 0, 10, 10)), b = make<NSView>(NSRect(0, 0, 20, 10));
    for (const auto &view : {a, b}) {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        parent->addSubview(view);
    }
    parent->addConstraint(NSLayoutConstraint::tie(a, A::leading, parent, A::leading, 4));
    parent->addConstraint(NSLayoutConstraint::tie(b, A::leading, a, A::trailing, 6));
    EXPECT_EQ(describe(a->frame()), "[86,0 10x10]");
    EXPECT_EQ(describe(b->frame()), "[60,0 20x10]");
    world.application->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::leftToRight);
    parent->layout();
    EXPECT_EQ(describe(a->frame()), "[4,0 10x10]");
}

TEST_F(Layout, autoresizingSharesTheDifference) {
    struct Row {
        unsigned mask;
        const char *frame;
    };
    // Parent from 100 by 100 to 200 by 140; child [10,20 30x40].
    const Row rows[] = {{NSViewNotSizable, "[10,20 30x40]"},
                        {NSViewWidthSizable | NSViewHeightSizable, "[10,20 130x80]"},
                        {NSViewMinXMargin | NSViewMinYMargin, "[110,60 30x40]"},
                        {NSViewMinXMargin | NSViewMaxXMargin, "[24.29,20 30x40]"},
                        {NSViewMaxXMargin | NSViewMaxYMargin, "[10,20 30x40]"}};
    for (const Row &row : rows) {
        const auto parent = make<NSView>(NSRect(0, 0, 100, 100)), child = make<NSView>(NSRect(10, 20, 30, 40));
        child->setAutoresizingMask(row.mask);
        parent->addSubview(child);
        parent->setFrameSize({200, 140});
        EXPECT_EQ(describe(child->frame()), row.frame) << row.mask;
    }
}

TEST_F(Stack, givesNaturalSizesAndTheRestToWhoHugsLeast) {
    const auto label = NSTextField::labelWithString("Name"), field = make<NSTextField>(), hidden = NSTextField::labelWithString("gone");
    field->setContentHuggingPriority(100);
    hidden->setHidden(true);
    const auto row = NSStackView::stackViewWithViews({label, hidden, field});
    row->setEdgeInsets({2, 10, 2, 10});
    row->setFrame({0, 0, 200, 30});
    EXPECT_EQ(row->toString(), "NSStackView [0,0 200x30]\n"
                               "  NSTextField [10,2 30x26] \"Name\"\n"
                               "  NSTextField [0,0 0x0] \"gone\" hidden\n"
                               "  NSTextField [48,2 142x26]\n");
    label->setStringValue("Longer name");
    EXPECT_EQ(describe(field->frame()), "[93.5,2 96.5x26]");
}

TEST_F(Stack, aRowRunsFromTheRightAndAColumnFromTheTop) {
    const auto a = make<NSView>(NSRect(0, 0, 20, 10)), b = make<NSView>(NSRect(0, 0, 30, 10));
    const auto stack = NSStackView::stackViewWithViews({a, b});
    stack->setSpacing(5);
    world.application->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::rightToLeft);
    stack->setFrame({0, 0, 100, 10});
    EXPECT_EQ(describe(a->frame()), "[80,0 20x10]");
    EXPECT_EQ(describe(b->frame()), "[45,0 30x10]");
    world.application->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection::leftToRight);
    b->addConstraint(NSLayoutConstraint::tie(b, A::width, nullptr, A::notAnAttribute, 44));
    stack->layout();
    EXPECT_EQ(describe(b->frame()), "[25,0 44x10]");
    stack->setOrientation(NSUserInterfaceLayoutOrientation::vertical);
    stack->setFrame({0, 0, 100, 50});
    EXPECT_EQ(describe(a->frame()), "[0,40 100x10]");
    EXPECT_EQ(describe(b->frame()), "[0,25 100x10]");
}

}  // namespace

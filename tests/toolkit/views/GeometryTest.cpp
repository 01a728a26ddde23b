#include "tests/toolkit/views/ViewsWorld.h"
#include "toolkit/views/NSScrollView.h"

namespace {

class FlippedView : public NSView {
public:
    [[nodiscard]] bool isFlipped() const override { return true; }
};

// Window content 200 by 100 (y up) with "up" [10,20 100x60] and in it "down" (flipped) [30,10 40x30], holding "leaf" [5,5 10x10].
struct Tree {
    ViewsWorld world;
    std::shared_ptr<NSWindow> window = ViewsWorld::window("w");
    std::shared_ptr<NSView> up = make<NSView>(NSRect(10, 20, 100, 60)), down = make<FlippedView>(NSRect(30, 10, 40, 30)),
                            leaf = make<NSView>(NSRect(5, 5, 10, 10));
    Tree() {
        window->contentView()->addSubview(up);
        up->addSubview(down);
        down->addSubview(leaf);
    }
    [[nodiscard]] const char *name(const std::shared_ptr<NSView> &view) const {
        return !view ? "none" : view == up ? "up" : view == down ? "down" : view == leaf ? "leaf" : "content";
    }
};

TEST(Geometry, convertsThroughFlippedViews) {
    const Tree tree;
    struct Row {
        std::shared_ptr<NSView> from, to;
        NSPoint point, result;
    };
    const Row rows[] = {
        {tree.up, nullptr, {0, 0}, {10, 20}},
        {tree.down, nullptr, {0, 0}, {40, 60}},      // its upper left corner
        {tree.down, nullptr, {40, 30}, {80, 30}},
        {tree.leaf, tree.down, {0, 0}, {5, 15}},     // its lower left corner
        {tree.leaf, nullptr, {0, 0}, {45, 45}},
        {nullptr, tree.leaf, {45, 55}, {0, 10}},
        {tree.up, tree.leaf, {35, 35}, {0, 10}},
    };
    for (const Row &row : rows) {
        const NSPoint got = row.to ? row.to->convertPoint_fromView(row.point, row.from) : row.from->convertPoint_toView(row.point, nullptr);
        EXPECT_EQ(got, row.result) << "row " << &row - rows << ": " << got.x << "," << got.y;
    }
    EXPECT_EQ(describe(tree.leaf->convertRect_toView({0, 0, 10, 10}, nullptr)), "[45,45 10x10]");
}

TEST(Geometry, hitsTheTopmostVisibleView) {
    Tree tree;
    const auto hit = [&](double x, double y) { return tree.name(tree.window->contentView()->hitTest({x, y})); };
    EXPECT_STREQ(hit(5, 5), "content");
    EXPECT_STREQ(hit(10, 20), "up");
    EXPECT_STREQ(hit(9.9, 20), "content");
    EXPECT_STREQ(hit(110, 30), "content");   // the right edge is outside
    EXPECT_STREQ(hit(41, 31), "down");
    EXPECT_STREQ(hit(46, 46), "leaf");
    EXPECT_STREQ(hit(-1, 5), "none");
    tree.leaf->setHidden(true);
    EXPECT_STREQ(hit(46, 46), "down");
    tree.up->setHidden(true);
    EXPECT_STREQ(hit(46, 46), "content");
}

TEST(Geometry, scrollsInsideTheDocumentOnly) {
    const ViewsWorld world;
    const auto scroll = make<NSScrollView>(NSRect(0, 0, 100, 50));
    const auto document = make<FlippedView>(NSRect(0, 0, 100, 500));
    scroll->setDocumentView(document);
    scroll->scrollToPoint({30, 120});
    EXPECT_EQ(describe(scroll->documentVisibleRect()), "[0,120 100x50]");
    scroll->scrollToPoint({0, 9999});
    EXPECT_EQ(describe(scroll->documentVisibleRect()), "[0,450 100x50]");
    EXPECT_TRUE(document->scrollRectToVisible({0, 200, 10, 20}));
    EXPECT_EQ(scroll->contentOffset(), (NSPoint{0, 200}));
    EXPECT_TRUE(document->scrollRectToVisible({0, 260, 10, 20}));
    EXPECT_EQ(scroll->contentOffset(), (NSPoint{0, 230}));
    EXPECT_FALSE(document->scrollRectToVisible({0, 240, 10, 20}));
    EXPECT_EQ(describe(document->visibleRect()), "[0,230 100x50]");
    scroll->setFrameSize({100, 400});
    EXPECT_EQ(describe(scroll->documentVisibleRect()), "[0,100 100x400]");
}

TEST(Geometry, paintsFlippedAndUnflippedViewsAlike) {
    class Painter : public NSView {
    public:
        void drawRect(const NSRect &, Canvas &canvas) override { canvas.fillRect({0, 0, 4, 2}, NSColor::blackColor()); }
    };
    class FlippedPainter : public Painter {
    public:
        [[nodiscard]] bool isFlipped() const override { return true; }
    };
    const ViewsWorld world;
    const auto top = make<NSView>(NSRect(0, 0, 100, 50));
    top->addSubview(make<Painter>(NSRect(10, 10, 20, 20)));
    top->addSubview(make<FlippedPainter>(NSRect(40, 10, 20, 20)));
    RecordingCanvas canvas;
    top->display(canvas);
    std::string fills;
    for (const std::string &line : canvas.lines())
        fills += line.starts_with("fill") ? line + "\n" : "";
    EXPECT_EQ(fills, "fill [10,38 4x2] #FF000000\nfill [40,20 4x2] #FF000000\n");
    EXPECT_FALSE(top->needsDisplay());
}

TEST(Geometry, mutatorsRefuseOtherThreads) {
    const ViewsWorld world;
    const auto view = make<NSView>();
    bool refused = false;
    dispatch::async(dispatch::global(), [&] {
        try {
            view->setFrame({0, 0, 1, 1});
        } catch (const std::logic_error &) {
            refused = true;
        }
        view->setHidden(true);
    });
    dispatch::settle();
    EXPECT_TRUE(refused);
    EXPECT_TRUE(view->isHidden());
}

}  // namespace

// A grid of pictures, grouped under titles or flat. It makes cells only for what shows, and takes rows, groups and the
// selection from its view model.
//
// Place      in a clip view it takes the clip's width and the height that its rows need; flipped, row 0 at the top.
// Groups     a title line of kTitleHeight, then rows of cells; a folded group shows its title alone.
// Selection  the view model's: what a person or a program selects here is set there, and a change there shows here. The
//            delegate is told of each change, by whomever.
// Threads    main.
#pragma once

#include <map>

#include "HNManagerPlugin/contracts/RVViewTemplate/RVBaseImageBrowserViewModel.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserCell.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserViewActionDelegate.h"
#include "toolkit/views/NSView.h"

// Keys of setValue_forKey.
inline constexpr const char *IKImageBrowserSelectionColorKey = "IKImageBrowserSelectionColorKey";
inline constexpr const char *IKImageBrowserCellsTitleAttributesKey = "IKImageBrowserCellsTitleAttributesKey";
inline constexpr const char *IKImageBrowserCellsHighlightedTitleAttributesKey = "IKImageBrowserCellsHighlightedTitleAttributesKey";

class RVImageBrowser : public NSView {
public:
    static constexpr double kTitleHeight = 30, kEdge = 10;

    void initWithFrame(const NSRect &frame) override;

    void setDataSource(const std::shared_ptr<RVBaseImageBrowserViewModel> &model);
    [[nodiscard]] std::shared_ptr<RVBaseImageBrowserViewModel> dataSource() const { return model_.lock(); }
    template <class T> void setActionDelegate(const std::shared_ptr<T> &delegate) { delegate_ = std::shared_ptr<RVImageBrowserViewActionDelegate>(delegate); }
    void setActionDelegate(std::nullptr_t) { delegate_.reset(); }

    // Reads items, groups and style anew; cells of items that are still there keep what they have decoded. Selected rows out
    // of range are dropped. Groups are unfolded where they are new.
    void reloadData();

    [[nodiscard]] const NSIndexSet &selectionIndexes() const;
    void setSelectionIndexes_byExtendingSelection(const NSIndexSet &indexes, bool extend);
    void selectAll(const id &sender = nullptr);
    void expandGroupAtIndex(std::size_t group);
    void collapseGroupAtIndex(std::size_t group);
    [[nodiscard]] bool isGroupExpandedAtIndex(std::size_t group) const;
    [[nodiscard]] const std::vector<RVImageBrowserGroup> &groups() const { return groups_; }
    [[nodiscard]] std::size_t numberOfItems() const { return items_.count(); }
    // Made where it is not there yet; null out of range and in a folded group.
    [[nodiscard]] std::shared_ptr<RVImageBrowserCell> cellForItemAtIndex(std::size_t row);
    [[nodiscard]] std::size_t numberOfCells() const { return cells_.size(); }

    [[nodiscard]] NSSize cellSize() const { return cellSize_; }
    void setCellSize(NSSize size);
    [[nodiscard]] NSSize intercellSpacing() const { return spacing_; }
    void setIntercellSpacing(NSSize spacing);
    // Bits of what a cell shows besides its picture; 0 shows neither title nor frame.
    void setCellsStyleMask(unsigned mask) { styleMask_ = mask; }
    [[nodiscard]] unsigned cellsStyleMask() const { return styleMask_; }
    // Under the keys above: an NSColor, or an NSAttributedString whose first character has the attributes.
    bool setValue_forKey(const Value &value, std::string_view key) override;
    [[nodiscard]] const std::shared_ptr<NSColor> &selectionColor() const { return selectionColor_; }
    [[nodiscard]] const TextStyle &titleStyle() const { return titleStyle_; }
    [[nodiscard]] const TextStyle &highlightedTitleStyle() const { return highlightedTitleStyle_; }

    // In the browser's own space; empty out of range and in a folded group.
    [[nodiscard]] NSRect itemFrameAtIndex(std::size_t row) const;
    // NSNotFound for none.
    [[nodiscard]] std::size_t indexOfItemAtPoint(NSPoint point) const;
    [[nodiscard]] std::size_t numberOfColumns() const;
    void scrollIndexToVisible(std::size_t row);
    // A whole click on a cell's middle part that is no button, as a person's.
    void performClick(std::size_t row, NSEventModifierFlags modifiers = 0, int clickCount = 1);

    [[nodiscard]] bool isFlipped() const override { return true; }
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    void mouseDown(NSEvent &event) override;
    void mouseMoved(NSEvent &event) override;
    void mouseExited(NSEvent &event) override;
    void keyDown(NSEvent &event) override;
    [[nodiscard]] std::shared_ptr<NSMenu> menuForEvent(NSEvent &event) override;
    void viewDidMoveToSuperview() override;
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    [[nodiscard]] std::string describeContent() const override;
    HN_DECLARE_CLASS_TABLE

protected:
    void frameDidChange(const NSRect &old) override;

private:
    // One block of rows below one title; the flat style has a single one without a title.
    struct Section {
        std::size_t group = 0;
        NSRange rows;
        double top = 0, height = 0;
        bool hasTitle = false, isFolded = false;
    };
    void layOut();
    void selectionChanged();
    void clickSelects(std::size_t row, NSEventModifierFlags modifiers);
    void hover(const std::shared_ptr<RVImageBrowserCell> &cell, NSEvent &event);
    [[nodiscard]] const Section *sectionOf(std::size_t row) const;
    [[nodiscard]] NSPoint pointOf(const NSEvent &event) const;

    std::weak_ptr<RVBaseImageBrowserViewModel> model_;
    std::weak_ptr<RVImageBrowserViewActionDelegate> delegate_;
    NSArray items_;
    std::vector<RVImageBrowserGroup> groups_;
    std::vector<Section> sections_;
    std::map<NSString, bool> folded_;
    std::map<std::size_t, std::shared_ptr<RVImageBrowserCell>> cells_;
    std::weak_ptr<RVImageBrowserCell> hovered_;
    NSSize cellSize_{100, 100}, spacing_{10, 10};
    std::shared_ptr<NSColor> selectionColor_;
    TextStyle titleStyle_, highlightedTitleStyle_;
    std::size_t anchor_ = NSNotFound;
    unsigned styleMask_ = 0;
    bool isLayingOut_ = false;
};

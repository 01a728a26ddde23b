// Views in a row or a column, each with its natural size: forms and bars that follow translations and right-to-left.
//
// Natural   a constant width or height constraint on the view itself, else intrinsicContentSize, else the size that the
//           view had when it was arranged.
// Along     natural sizes; what is left over goes in equal parts to the views whose
//           contentHuggingPriority is below 250, else stays empty at the end (fill: goes to the last view).
//           What is missing is taken from those same views first, then from the end.
// Across    every view is as wide (high) as the stack, or natural at the leading edge, in the middle, at the trailing edge.
// Hidden    views take no room. A row runs from right to left where the application does.
// Threads   main.
#pragma once

#include <unordered_map>

#include "toolkit/views/NSView.h"

enum class NSUserInterfaceLayoutOrientation { horizontal, vertical };
enum class NSStackAlignment { fill, leading, center, trailing };
struct NSEdgeInsets {
    double top = 0, left = 0, bottom = 0, right = 0;
    bool operator==(const NSEdgeInsets &) const = default;
};

class NSStackView : public NSView {
public:
    [[nodiscard]] static std::shared_ptr<NSStackView> stackViewWithViews(const List &views, NSUserInterfaceLayoutOrientation orientation =
                                                                                               NSUserInterfaceLayoutOrientation::horizontal);
    [[nodiscard]] const List &arrangedSubviews() const { return arranged_; }
    void addArrangedSubview(const std::shared_ptr<NSView> &view) { insertArrangedSubview_atIndex(view, arranged_.size()); }
    void insertArrangedSubview_atIndex(const std::shared_ptr<NSView> &view, std::size_t index);
    void removeArrangedSubview(const std::shared_ptr<NSView> &view);
    [[nodiscard]] NSUserInterfaceLayoutOrientation orientation() const { return orientation_; }
    void setOrientation(NSUserInterfaceLayoutOrientation orientation);
    [[nodiscard]] double spacing() const { return spacing_; }
    void setSpacing(double spacing);
    [[nodiscard]] const NSEdgeInsets &edgeInsets() const { return insets_; }
    void setEdgeInsets(const NSEdgeInsets &insets);
    [[nodiscard]] NSStackAlignment alignment() const { return alignment_; }
    void setAlignment(NSStackAlignment alignment);
    // The last view takes what is left over where nobody else does.
    [[nodiscard]] bool fillsWithLast() const { return fillsWithLast_; }
    void setFillsWithLast(bool fills);

    [[nodiscard]] NSSize intrinsicContentSize() const override;
    void layout() override;
    [[nodiscard]] bool mirrorsSubviews() const override { return false; }
    HN_DECLARE_CLASS_TABLE

protected:
    void subviewDidChangeIntrinsicSize(NSView &view) override;
    void willRemoveSubview(NSView &view) override;

private:
    [[nodiscard]] bool isRow() const { return orientation_ == NSUserInterfaceLayoutOrientation::horizontal; }
    [[nodiscard]] List shown() const;
    [[nodiscard]] NSSize naturalSizeOf(const NSView &view) const;
    void arrange();
    void changed();
    List arranged_;
    std::unordered_map<const NSView *, NSSize> sizeWhenArranged_;
    NSUserInterfaceLayoutOrientation orientation_ = NSUserInterfaceLayoutOrientation::horizontal;
    NSStackAlignment alignment_ = NSStackAlignment::fill;
    NSEdgeInsets insets_;
    double spacing_ = 8;
    bool fillsWithLast_ = false, isArranging_ = false;
};

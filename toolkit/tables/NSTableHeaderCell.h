// What the header shows over one column: its title, and how it is painted. No view: the header view paints its cells.
// Threads: main.
#pragma once

#include <memory>

#include "toolkit/NSObject.h"
#include "toolkit/views/Canvas.h"

class NSTableHeaderView;

// The mark of the column that the table is sorted by.
enum class SortIndicator { none, ascending, descending };

class NSTableHeaderCell : public NSObject {
public:
    using NSObject::init;
    void init(NSString title) { title_ = std::move(title); }

    [[nodiscard]] const NSString &title() const { return title_; }
    [[nodiscard]] NSString stringValue() const { return title_; }
    virtual void setTitle(NSString title) { title_ = std::move(title); }
    void setStringValue(NSString title) { setTitle(std::move(title)); }
    // Null stands for the system's.
    [[nodiscard]] const std::shared_ptr<NSFont> &font() const { return font_; }
    void setFont(std::shared_ptr<NSFont> font) { font_ = std::move(font); }
    [[nodiscard]] const std::shared_ptr<NSColor> &textColor() const { return textColor_; }
    void setTextColor(std::shared_ptr<NSColor> color) { textColor_ = std::move(color); }
    // Null paints no background.
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color) { backgroundColor_ = std::move(color); }
    [[nodiscard]] NSTextAlignment alignment() const { return alignment_; }
    void setAlignment(NSTextAlignment alignment) { alignment_ = alignment; }

    // `frame` in the header view's bounds.
    virtual void drawWithFrame_inView(const NSRect &frame, Canvas &canvas, NSTableHeaderView &view, SortIndicator indicator);
    HN_DECLARE_CLASS_TABLE

private:
    NSString title_;
    std::shared_ptr<NSFont> font_;
    std::shared_ptr<NSColor> textColor_, backgroundColor_;
    NSTextAlignment alignment_ = NSTextAlignment::left;
};

// The conversation pane: a table of one column, a row per message or caption.
//
// Rows      `messageArray`, to which the nib binds arrayController; whoever changes it rearranges the controller.
// Heights   measured once per row and kept in the row's textHeight (0: not yet); captions have fixed heights.
// Pictures  of extreme proportions (one side three times the other or more, in whole numbers) show their corner alone.
// Threads   main.
#pragma once

#include "HNManagerPlugin/Classes/SubViews/Message/ViewModel/HNDetailMessage.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVTableController.h"
#include "toolkit/lists/NSArrayController.h"
#include "toolkit/views/NSTextField.h"

class HNMessageDetailViewController : public RVTableController {
public:
    HN_DECLARE_CLASS_TABLE
    static constexpr double kTextWidth = 220.0;   // where a message's text wraps

    std::shared_ptr<NSMutableArray> messageArray;   // of HNDetailMessage
    std::weak_ptr<NSArrayController> arrayController;   // nib outlet
    std::shared_ptr<NSTextField> calculateTextTField;   // measures, never shown
    std::shared_ptr<NSFont> calculateFont;

    void init() override;
    void initWithNibName_bundle(NSString nibName, std::shared_ptr<NSBundle> bundle) override;
    void setupUI() override;

    // Shows these rows, the last one in view.
    void showMessages(const NSArray &messages);

    std::shared_ptr<NSView> tableView_viewForTableColumn_row(NSTableView &table, const std::shared_ptr<NSTableColumn> &column,
                                                             std::int64_t row) override;
    double tableView_heightOfRow(NSTableView &table, std::int64_t row) override;
    bool selectionShouldChangeInTableView(NSTableView &) override { return false; }

    [[nodiscard]] static bool isImageBigSize(const std::shared_ptr<NSImage> &image);
    // The corner of a big picture; any other as it is.
    [[nodiscard]] static std::shared_ptr<NSImage> fixImageBigSize(const std::shared_ptr<NSImage> &image);
    // `rect` of the picture in pixels, narrowed to the picture.
    [[nodiscard]] static std::shared_ptr<NSImage> doFilter_withRect(const std::shared_ptr<NSImage> &image, NSRect rect);
    // Points that a text takes at this width; 0 for an absent or empty one.
    [[nodiscard]] double getHeightByWidth_title_font(double width, const NSString &title, const std::shared_ptr<NSFont> &font);

private:
    [[nodiscard]] std::shared_ptr<HNDetailMessage> messageAtRow(std::int64_t row) const;
};

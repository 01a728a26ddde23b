// The full-size preview: a window with one page of several on show, buttons to turn them, export and delete.
//
// Pages     the page on show and its two neighbours are fetched; each page once, unless it failed and is shown again.
// Delete    the handler gives 0 when the page's photo is gone: the page goes too, the next one shows, and with the last page
//           the window closes.
// Closed    told once, after the window has closed by whatever way.
// Owners    whoever made it; a fetch that comes back later keeps it for the call. Threads: main.
#pragma once

#include <set>

#include "HNManagerPlugin/contracts/RVViewTemplate/LZPageItem.h"
#include "toolkit/NSColor.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/views/NSButton.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSTextField.h"
#include "toolkit/views/NSWindowController.h"

class PhotoPreviewController : public NSWindowController, public NSWindowDelegate {
public:
    using Page = std::shared_ptr<LZPageItem>;

    void setBackgroundColor(std::shared_ptr<NSColor> color);
    // The preview removes deleted pages from this very list.
    void setPageItems(std::shared_ptr<NSMutableArray> pages);
    [[nodiscard]] const std::shared_ptr<NSMutableArray> &pageItems() const { return pages_; }
    void setShowDeleteButton(bool shown);
    // Cut to the pages there are; 0 without pages.
    void setPageIndex(std::size_t index);
    [[nodiscard]] std::size_t pageIndex() const { return index_; }
    // Null without pages.
    [[nodiscard]] Page currentPage() const;
    void setCustomActionHandle(std::function<void(const Page &)> handle) { export_ = std::move(handle); }
    void setDeleteActionHandle(std::function<std::int32_t(const Page &)> handle) { delete_ = std::move(handle); }
    void setPageViewDidClosed(std::function<void()> handle) { closed_ = std::move(handle); }
    void showPreviewWindow();

    void onPrevious(const id &sender);
    void onNext(const id &sender);
    void onExport(const id &sender);
    void onDelete(const id &sender);

    [[nodiscard]] const std::shared_ptr<NSImageView> &pageView() const { return pageView_; }
    [[nodiscard]] const std::shared_ptr<NSButton> &deleteButton() const { return deleteButton_; }
    [[nodiscard]] const std::shared_ptr<NSButton> &exportButton() const { return exportButton_; }

    void init() override;
    void windowWillClose(NSWindow &window) override;
    HN_DECLARE_CLASS_TABLE

private:
    void showPage();
    void fetch(std::size_t index);
    void fetched(const Page &page, bool succeeded);

    std::shared_ptr<NSMutableArray> pages_;
    std::size_t index_ = 0;
    std::function<void(const Page &)> export_;
    std::function<std::int32_t(const Page &)> delete_;
    std::function<void()> closed_;
    std::set<const LZPageItem *> fetching_;   // pages whose fetch has not come back
    std::shared_ptr<NSImageView> pageView_;
    std::shared_ptr<NSTextField> counter_;
    std::shared_ptr<NSButton> previousButton_, nextButton_, exportButton_, deleteButton_;
};

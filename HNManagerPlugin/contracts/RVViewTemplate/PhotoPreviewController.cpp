#include "HNManagerPlugin/contracts/RVViewTemplate/PhotoPreviewController.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"

HN_CLASS_TABLE(PhotoPreviewController, NSWindowController,
    .key("pageIndex", [](NSObject &o) { return Value(static_cast<PhotoPreviewController &>(o).pageIndex()); },
         [](NSObject &o, const Value &v) { static_cast<PhotoPreviewController &>(o).setPageIndex(static_cast<std::size_t>(v.integerValue())); })
    .selector("onPrevious:", &PhotoPreviewController::onPrevious)
    .selector("onNext:", &PhotoPreviewController::onNext)
    .selector("onExport:", &PhotoPreviewController::onExport)
    .selector("onDelete:", &PhotoPreviewController::onDelete))

void PhotoPreviewController::init() {
    NSWindowController::init();
    pages_ = make<NSMutableArray>();
    const auto window = make<RUIWindow>(NSRect(0, 0, 1000, 700), RUIWindow::kUsualStyle | NSResizableWindowMask);
    const std::shared_ptr<NSView> &content = window->contentView();
    const NSSize size = content->frame().size;
    pageView_ = make<NSImageView>(NSRect(0, 48, size.width, size.height - 48));
    pageView_->setIdentifier("page");
    pageView_->setImageScaling(NSImageScaling::proportionallyDown);
    pageView_->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    content->addSubview(pageView_);
    counter_ = NSTextField::labelWithString("");
    counter_->setFrame({size.width / 2 - 60, 14, 120, 20});
    counter_->setIdentifier("counter");
    counter_->setAlignment(NSTextAlignment::center);
    counter_->setAutoresizingMask(NSViewMinXMargin | NSViewMaxXMargin);
    content->addSubview(counter_);
    const auto button = [&](double x, const char *identifier, const char *title, const char *action, unsigned mask) {
        const auto made = make<NSButton>(NSRect(x, 10, 90, 28));
        made->setIdentifier(identifier);
        made->setTitle(title);
        made->setAutoresizingMask(mask);
        made->connect(shared_from_this(), action);
        content->addSubview(made);
        return made;
    };
    previousButton_ = button(20, "previous", "‹", "onPrevious:", NSViewMaxXMargin);
    nextButton_ = button(120, "next", "›", "onNext:", NSViewMaxXMargin);
    exportButton_ = button(size.width - 210, "export", "Export", "onExport:", NSViewMinXMargin);
    deleteButton_ = button(size.width - 110, "delete", "Delete", "onDelete:", NSViewMinXMargin);
    deleteButton_->setHidden(true);
    window->setDelegate(selfOf(this));
    setWindow(window);
}

void PhotoPreviewController::setBackgroundColor(std::shared_ptr<NSColor> color) {
    window()->setBackgroundColor(std::move(color));
}

void PhotoPreviewController::setPageItems(std::shared_ptr<NSMutableArray> pages) {
    pages_ = pages ? std::move(pages) : make<NSMutableArray>();
    setPageIndex(index_);
}

void PhotoPreviewController::setShowDeleteButton(bool shown) {
    deleteButton_->setHidden(!shown);
}

void PhotoPreviewController::setPageIndex(std::size_t index) {
    const std::size_t count = pages_->count();
    index_ = count == 0 ? 0 : std::min(index, count - 1);
    if (window()->isVisible())
        showPage();
}

PhotoPreviewController::Page PhotoPreviewController::currentPage() const {
    return pages_->at<LZPageItem>(index_);
}

void PhotoPreviewController::showPreviewWindow() {
    window()->makeKeyAndOrderFront();
    showPage();
}

void PhotoPreviewController::showPage() {
    const Page page = currentPage();
    const std::size_t count = pages_->count();
    pageView_->setImage(page ? page->picture() : nullptr);
    counter_->setStringValue(NSString::stringWithFormat("%lu / %lu", page ? index_ + 1 : 0, count));
    previousButton_->setEnabled(page && index_ > 0);
    nextButton_->setEnabled(page && index_ + 1 < count);
    exportButton_->setEnabled(page != nullptr);
    deleteButton_->setEnabled(page != nullptr);
    fetch(index_);
    if (index_ > 0)
        fetch(index_ - 1);
    fetch(index_ + 1);
}

void PhotoPreviewController::fetch(std::size_t index) {
    const Page page = pages_->at<LZPageItem>(index);
    if (!page || fetching_.contains(page.get()) || page->picture())
        return;
    fetching_.insert(page.get());
    page->fetchPhotoWithCompletionHandle([self = weakOf(this), page](bool succeeded) {
        tell(self, [&](PhotoPreviewController &preview) { preview.fetched(page, succeeded); });
    });
}

void PhotoPreviewController::fetched(const Page &page, bool succeeded) {
    fetching_.erase(page.get());
    if (succeeded && page == currentPage())
        pageView_->setImage(page->picture());
}

void PhotoPreviewController::onPrevious(const id &) {
    if (index_ > 0)
        setPageIndex(index_ - 1);
}

void PhotoPreviewController::onNext(const id &) {
    setPageIndex(index_ + 1);
}

void PhotoPreviewController::onExport(const id &) {
    const auto handle = export_;
    if (const Page page = currentPage(); page && handle)
        handle(page);
}

void PhotoPreviewController::onDelete(const id &) {
    const auto handle = delete_;
    const Page page = currentPage();
    if (!page || !handle || handle(page) != 0)
        return;
    pages_->removeObjectsIdenticalIn({page});
    if (pages_->isEmpty())
        close();
    else
        setPageIndex(index_);
}

void PhotoPreviewController::windowWillClose(NSWindow &) {
    // Its owner lets go of it in here.
    const std::shared_ptr<NSObject> self = shared_from_this();
    if (const auto closed = std::exchange(closed_, {}))
        closed();
    export_ = {};
    delete_ = {};
}

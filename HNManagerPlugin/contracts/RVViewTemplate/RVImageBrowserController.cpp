#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserController.h"

#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(RVImageBrowserController, NSViewController,
    .key("imageBrowser", [](NSObject &o) { return Value(static_cast<RVImageBrowserController &>(o).imageBrowser()); })
    .selector("setupUI", &RVImageBrowserController::setupUI))

void RVImageBrowserController::setupUI() {
    if (imageBrowser_)
        imageBrowser_->reloadData();
}

void RVImageBrowserController::setImageBrowserDataSourceToViewModel(const std::shared_ptr<RVBaseImageBrowserViewModel> &model) {
    if (imageBrowser_)
        imageBrowser_->setDataSource(model);
}

void RVImageBrowserController::viewDidLoad() {
    NSViewController::viewDidLoad();
    if (systemVersion() >= SystemVersion{10, 10})
        setupUI();
}

// The controller that the photo browsers derive from: it owns the view, holds the browser and joins it to a view model.
// From system 10.10 on it calls setupUI itself when its view has loaded, once; below, its subclass does. Threads: main.
#pragma once

#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowser.h"
#include "toolkit/views/NSViewController.h"

class RVImageBrowserController : public NSViewController {
public:
    // Null before the nib has set it.
    [[nodiscard]] const std::shared_ptr<RVImageBrowser> &imageBrowser() const { return imageBrowser_; }
    void setImageBrowser(std::shared_ptr<RVImageBrowser> browser) { imageBrowser_ = std::move(browser); }

    // The closed part of setting up: the browser is told to read anew.
    virtual void setupUI();
    // The browser reads from the model from now on; items, groups, style, selection.
    virtual void setImageBrowserDataSourceToViewModel(const std::shared_ptr<RVBaseImageBrowserViewModel> &model);
    void viewDidLoad() override;
    virtual void viewWillAppear() {}
    HN_DECLARE_CLASS_TABLE

private:
    std::shared_ptr<RVImageBrowser> imageBrowser_;
};

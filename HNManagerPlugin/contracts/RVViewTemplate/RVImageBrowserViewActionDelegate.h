// What an image browser asks its controller. Main thread.
#pragma once

#include <memory>

#include "toolkit/NSObject.h"
#include "toolkit/views/NSEvent.h"

class NSMenu;
class RVImageBrowser;
class RVImageBrowserCell;

class RVImageBrowserViewActionDelegate {
public:
    virtual ~RVImageBrowserViewActionDelegate() = default;

    // The mouse went over to another cell; either may be null, both never are.
    virtual void RVImageBrowser_mouseDidEnteredCell_lastEnteredCell_mouseEvent(RVImageBrowser &, const std::shared_ptr<RVImageBrowserCell> &,
                                                                               const std::shared_ptr<RVImageBrowserCell> &, NSEvent &) {}
    // Before the browser handles a click on a cell; false: it does no more.
    virtual bool RVImageBrowser_mouseDownCell_AtRow_mouseEvent(RVImageBrowser &, const std::shared_ptr<RVImageBrowserCell> &,
                                                               std::size_t /*row*/, NSEvent &) {
        return true;
    }
    // A fresh cell for an item; null takes a plain one.
    virtual std::shared_ptr<RVImageBrowserCell> RVImageBrowser_newCellForRepresentedItem(RVImageBrowser &, const id &) { return nullptr; }
    virtual void imageBrowserSelectionDidChange(RVImageBrowser &) {}
    virtual void imageBrowser_cellWasDoubleClickedAtIndex(RVImageBrowser &, std::size_t) {}
    // The menus of a right click; null shows none. The cell clicked on is selected before.
    virtual std::shared_ptr<NSMenu> imageBrowser_menuForCellAtIndex(RVImageBrowser &, std::size_t) { return nullptr; }
    virtual std::shared_ptr<NSMenu> imageBrowser_menuForBackground(RVImageBrowser &) { return nullptr; }
};

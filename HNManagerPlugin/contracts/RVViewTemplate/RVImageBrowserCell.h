// One item of the image browser: its picture, a check box, a button in the middle, a badge with a text. No view: the browser
// paints its cells. All rectangles are in the browser's own space. Threads: main.
#pragma once

#include "toolkit/NSImage.h"
#include "toolkit/NSObject.h"
#include "toolkit/views/Canvas.h"

class RVImageBrowser;

class RVImageBrowserCell : public NSObject {
public:
    // ------------------------------------------------------------ what the controller sets
    void setCheckBoxImage_selectedImage(std::shared_ptr<NSImage> image, std::shared_ptr<NSImage> selectedImage);
    void setCenterButtonImage_highlightImage(std::shared_ptr<NSImage> image, std::shared_ptr<NSImage> highlightImage);
    // One slot: the last call wins. An absent text shows the badge alone.
    void setPhotoType_info(std::shared_ptr<NSImage> badge, NSString info);
    void needButtonCheckBox_centerButton(bool checkBox, bool centerButton);
    [[nodiscard]] bool isMouseEntered() const { return isMouseEntered_; }
    void setIsMouseEntered(bool entered) { isMouseEntered_ = entered; }

    // ------------------------------------------------------------ what the browser and tests ask
    // False also where there is no such button.
    [[nodiscard]] bool checkBoxButtonContainsPoint(NSPoint point) const;
    [[nodiscard]] bool centerButtonContainsPoint(NSPoint point) const;
    [[nodiscard]] NSRect checkBoxFrame() const;
    [[nodiscard]] NSRect centerButtonFrame() const;
    [[nodiscard]] const std::shared_ptr<NSImage> &badge() const { return badge_; }
    [[nodiscard]] const NSString &info() const { return info_; }
    [[nodiscard]] bool hasCheckBox() const { return hasCheckBox_; }
    [[nodiscard]] bool hasCenterButton() const { return hasCenterButton_; }
    [[nodiscard]] const NSRect &frame() const { return frame_; }
    [[nodiscard]] const id &representedItem() const { return item_; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    void draw(Canvas &canvas, const RVImageBrowser &browser);
    HN_DECLARE_CLASS_TABLE

private:
    friend class RVImageBrowser;
    void readPicture();
    NSRect frame_;
    id item_;
    NSString uid_;
    std::int64_t version_ = 0;
    std::shared_ptr<NSImage> picture_;
    std::shared_ptr<NSImage> checkBox_, checkBoxOn_, center_, centerHighlight_, badge_;
    NSString info_;
    bool hasCheckBox_ = false, hasCenterButton_ = false, isSelected_ = false, isMouseEntered_ = false;
};

#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserCell.h"

#include <algorithm>

#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowser.h"
#include "HNManagerPlugin/contracts/RVViewTemplate/RVImageBrowserModelDelegate.h"

HN_CLASS_TABLE(RVImageBrowserCell, NSObjectTable)

namespace {

constexpr double kCheckBox = 18, kCenter = 36, kBadge = 16, kMargin = 5, kLine = 15;

NSRect fitted(NSSize picture, const NSRect &into) {
    if (picture.width <= 0 || picture.height <= 0)
        return into;
    const double scale = std::min({into.size.width / picture.width, into.size.height / picture.height, 1.0});
    const NSSize size{picture.width * scale, picture.height * scale};
    return {into.minX() + (into.size.width - size.width) / 2, into.minY() + (into.size.height - size.height) / 2, size.width, size.height};
}

}  // namespace

void RVImageBrowserCell::setCheckBoxImage_selectedImage(std::shared_ptr<NSImage> image, std::shared_ptr<NSImage> selectedImage) {
    checkBox_ = std::move(image);
    checkBoxOn_ = std::move(selectedImage);
}

void RVImageBrowserCell::setCenterButtonImage_highlightImage(std::shared_ptr<NSImage> image, std::shared_ptr<NSImage> highlightImage) {
    center_ = std::move(image);
    centerHighlight_ = std::move(highlightImage);
}

void RVImageBrowserCell::setPhotoType_info(std::shared_ptr<NSImage> badge, NSString info) {
    badge_ = std::move(badge);
    info_ = std::move(info);
}

void RVImageBrowserCell::needButtonCheckBox_centerButton(bool checkBox, bool centerButton) {
    hasCheckBox_ = checkBox;
    hasCenterButton_ = centerButton;
}

NSRect RVImageBrowserCell::checkBoxFrame() const {
    return {frame_.maxX() - kMargin - kCheckBox, frame_.minY() + kMargin, kCheckBox, kCheckBox};
}

NSRect RVImageBrowserCell::centerButtonFrame() const {
    return {frame_.minX() + (frame_.size.width - kCenter) / 2, frame_.minY() + (frame_.size.height - kCenter) / 2, kCenter, kCenter};
}

bool RVImageBrowserCell::checkBoxButtonContainsPoint(NSPoint point) const {
    return hasCheckBox_ && checkBoxFrame().contains(point);
}

bool RVImageBrowserCell::centerButtonContainsPoint(NSPoint point) const {
    return hasCenterButton_ && centerButtonFrame().contains(point);
}

void RVImageBrowserCell::readPicture() {
    auto *item = dynamic_cast<RVImageBrowserModelDelegate *>(item_.get());
    if (!item)
        return;
    if (picture_ && uid_ == item->imageUID() && version_ == item->imageVersion())
        return;
    uid_ = item->imageUID();
    version_ = item->imageVersion();
    // The bytes are asked for when somebody decodes the picture, so that a cell that never shows costs nothing.
    if (item->imageRepresentationType() == ImageRepresentationType::data)
        picture_ = NSImage::withFetch([object = item_] {
            return dynamic_cast<RVImageBrowserModelDelegate &>(*object).imageRepresentation();
        });
    else
        picture_ = NSImage::withContentsOfFile(item->imageLocation());
}

void RVImageBrowserCell::draw(Canvas &canvas, const RVImageBrowser &browser) {
    readPicture();
    if (isSelected_)
        canvas.fillRoundedRect(frame_.insetBy(-4, -4), 4, browser.selectionColor());
    if (picture_)
        canvas.drawImage(picture_, fitted(picture_->size(), frame_));
    if (hasCheckBox_ && (isSelected_ || isMouseEntered_))
        canvas.drawImage(isSelected_ ? checkBoxOn_ : checkBox_, checkBoxFrame());
    if (hasCenterButton_)
        canvas.drawImage(isMouseEntered_ && centerHighlight_ ? centerHighlight_ : center_, centerButtonFrame());
    const NSRect badge{frame_.minX() + kMargin, frame_.maxY() - kMargin - kBadge, kBadge, kBadge};
    canvas.drawImage(badge_, badge);
    if (!info_.isEmpty())
        canvas.drawText(info_, {badge.maxX() + kMargin, badge.minY(), frame_.maxX() - badge.maxX() - 2 * kMargin, kLine},
                        TextStyle{NSFont::systemFontOfSize(11), NSColor::whiteColor(), NSTextAlignment::right, LineBreak::truncateTail});
    if (auto *item = dynamic_cast<RVImageBrowserModelDelegate *>(item_.get()))
        if (const NSString title = item->imageTitle(); !title.isEmpty())
            canvas.drawText(title, {frame_.minX(), frame_.maxY() + 2, frame_.size.width, kLine},
                            isSelected_ ? browser.highlightedTitleStyle() : browser.titleStyle());
}

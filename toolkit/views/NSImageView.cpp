#include "toolkit/views/NSImageView.h"

#include <algorithm>

#include "toolkit/views/ClassKeys.h"

HN_CLASS_TABLE(NSImageView, NSControl, .key("image", keys::get(&NSImageView::image), keys::set(&NSImageView::setImage)))

std::shared_ptr<NSImageView> NSImageView::imageViewWithImage(std::shared_ptr<NSImage> image) {
    const auto view = make<NSImageView>();
    view->setImage(std::move(image));
    view->sizeToFit();
    return view;
}

void NSImageView::setImage(std::shared_ptr<NSImage> image) {
    assertMain("NSImageView setImage:");
    if (image == image_)
        return;
    image_ = std::move(image);
    noteChanged("image");
    invalidateIntrinsicContentSize();
}

void NSImageView::setImageScaling(NSImageScaling scaling) {
    assertMain("NSImageView setImageScaling:");
    scaling_ = scaling;
    noteChanged("imageScaling");
}

NSRect NSImageView::imageRect() const {
    const NSRect area = bounds();
    NSSize size = image_ ? image_->size() : NSSize{};
    if (size.width <= 0 || size.height <= 0 || scaling_ == NSImageScaling::axesIndependently)
        return area;
    double scale = std::min(area.size.width / size.width, area.size.height / size.height);
    if (scaling_ == NSImageScaling::none)
        scale = 1;
    else if (scaling_ == NSImageScaling::proportionallyDown)
        scale = std::min(scale, 1.0);
    size = {size.width * scale, size.height * scale};
    return {area.minX() + (area.size.width - size.width) / 2, area.minY() + (area.size.height - size.height) / 2, size.width, size.height};
}

NSSize NSImageView::intrinsicContentSize() const {
    const NSSize size = image_ ? image_->size() : NSSize{};
    return size.width > 0 ? size : NSSize{NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric};
}

void NSImageView::drawRect(const NSRect &, Canvas &canvas) { canvas.drawImage(image_, imageRect()); }

std::string NSImageView::describeContent() const { return image_ ? image_->description().str() : "no picture"; }

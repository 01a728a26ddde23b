#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/HNContactPhotoView.h"

HN_CLASS_TABLE(HNContactPhotoView, NSView, .selector("choose", &HNContactPhotoView::choose))

void HNContactPhotoView::setPhoto(const std::shared_ptr<NSImage> &image) {
    tell(photo, [&](NSImageView &view) { view.setImage(image); });
}

void HNContactPhotoView::choose() {
    tell(delegate, [this](HNContactPhotoViewDelegate &d) { d.setPictureView(*this); });
}

void HNContactPhotoView::mouseDown(NSEvent &) { choose(); }

void HNContactPhotoView::mouseEntered(NSEvent &) {
    tell(text, [](NSTextField &hint) { hint.setHidden(false); });
}

void HNContactPhotoView::mouseExited(NSEvent &) {
    tell(text, [](NSTextField &hint) { hint.setHidden(true); });
}

// The picture and the hint let clicks through.
std::shared_ptr<NSView> HNContactPhotoView::hitTest(NSPoint point) {
    return NSView::hitTest(point) ? selfOf(this) : nullptr;
}

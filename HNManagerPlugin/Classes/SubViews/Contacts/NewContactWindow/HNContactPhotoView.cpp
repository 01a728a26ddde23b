#include "HNManagerPlugin/Classes/SubViews/Contacts/NewContactWindow/HNContactPhotoView.h"

#include "toolkit/services/NSBundle.h"

HN_CLASS_TABLE(HNContactPhotoView, NSView, .selector("choose", &HNContactPhotoView::choose))

void HNContactPhotoView::setPhoto(const std::shared_ptr<NSImage> &image) {
    tell(photo, [&](NSImageView &view) { view.setImage(image); });
}

void HNContactPhotoView::choose() {
    tell(delegate, [this](HNContactPhotoViewDelegate &d) { d.setPictureView(*this); });
}

void HNContactPhotoView::mouseDown(NSEvent &) { choose(); }

void HNContactPhotoView::keyDown(NSEvent &event) {
    if (event.keyCode == keycode::space)
        choose();
    else
        NSView::keyDown(event);
}

void HNContactPhotoView::drawRect(const NSRect &, Canvas &canvas) {
    constexpr double kInset = 3, kRadius = 4, kFaint = 0.45;
    const auto shown = photo.lock();
    if (shown && shown->image())
        return;
    const NSRect area = bounds().insetBy(kInset, kInset);
    canvas.drawImage(NSBundle::bundleForClass()->imageForResource_ofType("icon_list_user", "png"), area, {}, kFaint);
    canvas.strokeRoundedRect(area, kRadius, NSColor::lightGrayColor());
}

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

// The contact's picture in the editor, with a hint while the pointer is over it; a click, or the space bar, asks for another
// one. Without a picture it shows where one goes. Threads: main.
#pragma once

#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSTextField.h"

class HNContactPhotoView;

class HNContactPhotoViewDelegate {
public:
    virtual ~HNContactPhotoViewDelegate() = default;
    virtual void setPictureView(HNContactPhotoView &view) = 0;
};

class HNContactPhotoView : public NSView {
public:
    HN_DECLARE_CLASS_TABLE

    std::weak_ptr<NSImageView> photo;   // nib outlets
    std::weak_ptr<NSTextField> text;
    std::weak_ptr<HNContactPhotoViewDelegate> delegate;

    void setPhoto(const std::shared_ptr<NSImage> &image);
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    void drawRect(const NSRect &rect, Canvas &canvas) override;
    void mouseDown(NSEvent &event) override;
    void keyDown(NSEvent &event) override;
    void mouseEntered(NSEvent &event) override;
    void mouseExited(NSEvent &event) override;
    // What a click does.
    void choose();
    [[nodiscard]] std::shared_ptr<NSView> hitTest(NSPoint point) override;
};

// Layers and animations, headless: the end state stands at once, what moved on the way is recorded for a host that shows
// it. Threads: main.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/NSAttributedString.h"
#include "toolkit/NSColor.h"
#include "toolkit/NSGeometry.h"
#include "toolkit/NSImage.h"
#include "toolkit/views/Canvas.h"

class NSView;

// A record of one animation on a key path. A repeat count of infinity or more than 2^62 goes on for ever.
class CABasicAnimation : public NSObject {
public:
    [[nodiscard]] static std::shared_ptr<CABasicAnimation> animationWithKeyPath(NSString keyPath);
    NSString keyPath;
    double fromValue = 0, toValue = 0, byValue = 0;
    double duration = 0;   // seconds
    float repeatCount = 0;
    bool cumulative = false, autoreverses = false, removedOnCompletion = true;
    HN_DECLARE_CLASS_TABLE
};

class CALayer : public NSObject {
public:
    [[nodiscard]] double borderWidth() const { return borderWidth_; }
    void setBorderWidth(double width);
    [[nodiscard]] const std::shared_ptr<NSColor> &borderColor() const { return borderColor_; }
    void setBorderColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] const std::shared_ptr<NSColor> &backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] double cornerRadius() const { return cornerRadius_; }
    void setCornerRadius(double radius);
    [[nodiscard]] bool masksToBounds() const { return masksToBounds_; }
    void setMasksToBounds(bool masks) { masksToBounds_ = masks; }
    [[nodiscard]] double opacity() const { return opacity_; }
    void setOpacity(double opacity);
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    void setHidden(bool hidden);
    [[nodiscard]] const std::shared_ptr<NSImage> &contents() const { return contents_; }
    void setContents(std::shared_ptr<NSImage> image);

    // In parts of the bounds, (0.5, 0.5) is the middle; a subclass may always answer its own.
    [[nodiscard]] virtual NSPoint anchorPoint() const { return anchorPoint_; }
    virtual void setAnchorPoint(NSPoint point);
    // Where the anchor point lies in the superlayer. Of a view's own layer it is told to hosts alone: the view's frame
    // stays.
    [[nodiscard]] NSPoint position() const { return position_; }
    void setPosition(NSPoint point);
    // From position, anchor point and size.
    [[nodiscard]] NSRect frame() const;
    void setFrame(const NSRect &frame);
    [[nodiscard]] NSRect bounds() const { return {{0, 0}, size_}; }

    [[nodiscard]] const std::vector<std::shared_ptr<CALayer>> &sublayers() const { return sublayers_; }
    void addSublayer(const std::shared_ptr<CALayer> &layer);
    void removeFromSuperlayer();
    [[nodiscard]] std::shared_ptr<CALayer> superlayer() const { return superlayer_.lock(); }

    // A null animation is ignored; the same key replaces. The layer keeps the record until it is removed.
    void addAnimation_forKey(const std::shared_ptr<CABasicAnimation> &animation, const NSString &key);
    void removeAnimationForKey(const NSString &key);
    void removeAllAnimations();
    [[nodiscard]] std::shared_ptr<CABasicAnimation> animationForKey(const NSString &key) const;
    [[nodiscard]] std::vector<NSString> animationKeys() const;

    void setNeedsDisplay();
    // Background, contents, own picture, sublayers, border; in the space of the superlayer. Without its frame's offset
    // where it is a view's own layer (`size` is then the view's).
    void render(Canvas &canvas) const;
    void renderBackground(Canvas &canvas, const NSRect &rect) const;
    void renderSublayersAndBorder(Canvas &canvas, const NSRect &rect) const;
    HN_DECLARE_CLASS_TABLE

protected:
    virtual void drawContents(Canvas &canvas, const NSRect &rect) const;

private:
    friend class NSView;
    double borderWidth_ = 0, cornerRadius_ = 0, opacity_ = 1;
    bool masksToBounds_ = false, isHidden_ = false;
    std::shared_ptr<NSColor> borderColor_, backgroundColor_;
    std::shared_ptr<NSImage> contents_;
    NSPoint anchorPoint_{0.5, 0.5}, position_;
    NSSize size_;
    std::vector<std::shared_ptr<CALayer>> sublayers_;
    std::weak_ptr<CALayer> superlayer_;
    std::weak_ptr<NSView> view_;
    std::map<NSString, std::shared_ptr<CABasicAnimation>> animations_;
};

class CATextLayer : public CALayer {
public:
    [[nodiscard]] const NSString &string() const { return string_; }
    void setString(NSString text);
    [[nodiscard]] const std::shared_ptr<NSFont> &font() const { return font_; }
    void setFont(std::shared_ptr<NSFont> font);
    // Wins over the font's own size; 0 leaves that.
    [[nodiscard]] double fontSize() const { return fontSize_; }
    void setFontSize(double size);
    [[nodiscard]] const std::shared_ptr<NSColor> &foregroundColor() const { return foregroundColor_; }
    void setForegroundColor(std::shared_ptr<NSColor> color);
    [[nodiscard]] NSTextAlignment alignmentMode() const { return alignment_; }
    void setAlignmentMode(NSTextAlignment alignment);
    [[nodiscard]] LineBreak truncationMode() const { return truncation_; }
    void setTruncationMode(LineBreak mode);
    HN_DECLARE_CLASS_TABLE

protected:
    void drawContents(Canvas &canvas, const NSRect &rect) const override;

private:
    NSString string_;
    std::shared_ptr<NSFont> font_;
    double fontSize_ = 0;
    std::shared_ptr<NSColor> foregroundColor_ = NSColor::blackColor();
    NSTextAlignment alignment_ = NSTextAlignment::left;
    LineBreak truncation_ = LineBreak::truncateTail;
};

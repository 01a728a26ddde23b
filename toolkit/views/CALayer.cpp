#include "toolkit/views/CALayer.h"

#include <algorithm>

#include "toolkit/views/ClassKeys.h"
#include "toolkit/views/NSView.h"

HN_CLASS_TABLE(CABasicAnimation, NSObjectTable, .key("keyPath", &CABasicAnimation::keyPath).key("toValue", &CABasicAnimation::toValue)
                                                    .key("duration", &CABasicAnimation::duration))
HN_CLASS_TABLE(CALayer, NSObjectTable, .key("borderWidth", keys::get(&CALayer::borderWidth), keys::set(&CALayer::setBorderWidth))
                   .key("hidden", keys::get(&CALayer::isHidden), keys::set(&CALayer::setHidden))
                   .key("opacity", keys::get(&CALayer::opacity), keys::set(&CALayer::setOpacity))
                   .key("borderColor", keys::get(&CALayer::borderColor), keys::set(&CALayer::setBorderColor))
                   .key("backgroundColor", keys::get(&CALayer::backgroundColor), keys::set(&CALayer::setBackgroundColor)))
HN_CLASS_TABLE(CATextLayer, CALayer, .key("string", keys::get(&CATextLayer::string), keys::set(&CATextLayer::setString)))

std::shared_ptr<CABasicAnimation> CABasicAnimation::animationWithKeyPath(NSString keyPath) {
    const auto animation = make<CABasicAnimation>();
    animation->keyPath = std::move(keyPath);
    return animation;
}

void CALayer::setNeedsDisplay() {
    std::shared_ptr<NSView> view = view_.lock();
    for (auto layer = superlayer_.lock(); !view && layer; layer = layer->superlayer_.lock())
        view = layer->view_.lock();
    if (view)
        view->setNeedsDisplay(true);
}

#define HN_LAYER_SETTER(Setter, Type, field) \
    void CALayer::Setter(Type value) {       \
        field = std::move(value);            \
        setNeedsDisplay();                   \
    }
HN_LAYER_SETTER(setBorderWidth, double, borderWidth_)
HN_LAYER_SETTER(setBorderColor, std::shared_ptr<NSColor>, borderColor_)
HN_LAYER_SETTER(setBackgroundColor, std::shared_ptr<NSColor>, backgroundColor_)
HN_LAYER_SETTER(setCornerRadius, double, cornerRadius_)
HN_LAYER_SETTER(setOpacity, double, opacity_)
HN_LAYER_SETTER(setHidden, bool, isHidden_)
HN_LAYER_SETTER(setContents, std::shared_ptr<NSImage>, contents_)
HN_LAYER_SETTER(setAnchorPoint, NSPoint, anchorPoint_)
HN_LAYER_SETTER(setPosition, NSPoint, position_)
#undef HN_LAYER_SETTER

NSRect CALayer::frame() const {
    const NSPoint anchor = anchorPoint();
    return {position_.x - anchor.x * size_.width, position_.y - anchor.y * size_.height, size_.width, size_.height};
}

void CALayer::setFrame(const NSRect &frame) {
    const NSPoint anchor = anchorPoint();
    size_ = frame.size;
    position_ = {frame.origin.x + anchor.x * size_.width, frame.origin.y + anchor.y * size_.height};
    setNeedsDisplay();
}

void CALayer::addSublayer(const std::shared_ptr<CALayer> &layer) {
    for (const CALayer *above = this; above; above = above->superlayer_.lock().get())
        if (above == layer.get())
            return;
    if (!layer)
        return;
    layer->removeFromSuperlayer();
    layer->superlayer_ = selfOf(this);
    sublayers_.push_back(layer);
    setNeedsDisplay();
}

void CALayer::removeFromSuperlayer() {
    const auto above = superlayer_.lock();
    if (!above)
        return;
    superlayer_.reset();
    above->setNeedsDisplay();
    std::erase_if(above->sublayers_, [this](const auto &layer) { return layer.get() == this; });
}

void CALayer::addAnimation_forKey(const std::shared_ptr<CABasicAnimation> &animation, const NSString &key) {
    if (!animation)
        return;
    animations_[key] = animation;
    setNeedsDisplay();
}

void CALayer::removeAnimationForKey(const NSString &key) {
    if (animations_.erase(key))
        setNeedsDisplay();
}

void CALayer::removeAllAnimations() {
    animations_.clear();
    setNeedsDisplay();
}

std::shared_ptr<CABasicAnimation> CALayer::animationForKey(const NSString &key) const {
    const auto found = animations_.find(key);
    return found == animations_.end() ? nullptr : found->second;
}

std::vector<NSString> CALayer::animationKeys() const {
    std::vector<NSString> names;
    for (const auto &[key, animation] : animations_)
        names.push_back(key);
    return names;
}

void CALayer::renderBackground(Canvas &canvas, const NSRect &rect) const {
    canvas.fillRoundedRect(rect, cornerRadius_, backgroundColor_);
    canvas.drawImage(contents_, rect);
    drawContents(canvas, rect);
}

void CALayer::renderSublayersAndBorder(Canvas &canvas, const NSRect &rect) const {
    for (const auto &layer : sublayers_)
        layer->render(canvas);
    canvas.strokeRoundedRect(rect, cornerRadius_, borderColor_, borderWidth_);
}

void CALayer::render(Canvas &canvas) const {
    if (isHidden_ || opacity_ <= 0)
        return;
    const NSRect place = frame();
    canvas.saveState();
    if (opacity_ < 1)
        canvas.setAlpha(opacity_);
    canvas.translate(place.origin.x, place.origin.y);
    if (masksToBounds_)
        canvas.clipToRoundedRect(bounds(), cornerRadius_);
    renderBackground(canvas, bounds());
    renderSublayersAndBorder(canvas, bounds());
    canvas.restoreState();
}

void CALayer::drawContents(Canvas &, const NSRect &) const {}

// ---------------------------------------------------------------- CATextLayer

#define HN_LAYER_SETTER(Setter, Type, field) \
    void CATextLayer::Setter(Type value) {   \
        field = std::move(value);            \
        setNeedsDisplay();                   \
    }
HN_LAYER_SETTER(setString, NSString, string_)
HN_LAYER_SETTER(setFont, std::shared_ptr<NSFont>, font_)
HN_LAYER_SETTER(setFontSize, double, fontSize_)
HN_LAYER_SETTER(setForegroundColor, std::shared_ptr<NSColor>, foregroundColor_)
HN_LAYER_SETTER(setAlignmentMode, NSTextAlignment, alignment_)
HN_LAYER_SETTER(setTruncationMode, LineBreak, truncation_)
#undef HN_LAYER_SETTER

void CATextLayer::drawContents(Canvas &canvas, const NSRect &rect) const {
    std::shared_ptr<NSFont> font = font_;
    if (fontSize_ > 0 && (!font || font->pointSize() != fontSize_))
        font = font ? NSFont::fontWithName_size(font->fontName(), fontSize_) : NSFont::systemFontOfSize(fontSize_);
    canvas.drawText(string_, rect, {font, foregroundColor_, alignment_, truncation_});
}

#include "toolkit/views/Canvas.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

// ---------------------------------------------------------------- Canvas

void Canvas::saveState() {
    saved_.push_back(state_);
    onSave();
}

void Canvas::restoreState() {
    if (saved_.empty())
        return;
    state_ = saved_.back();
    saved_.pop_back();
    onRestore();
}

void Canvas::setAlpha(double alpha) {
    state_.alpha *= alpha;
    onAlpha(alpha);
}

void Canvas::translate(double dx, double dy) {
    state_.dx += dx;
    state_.dy += state_.up ? -dy : dy;
}

void Canvas::enterSpace(bool flipped, double height) {
    if (state_.up == !flipped)
        return;
    // The upper edge of the space is where the origin stands while y counts down, `height` above it while y counts up.
    state_.dy += flipped ? -height : height;
    state_.up = !flipped;
}

NSPoint Canvas::mapped(NSPoint p) const { return {p.x + state_.dx, state_.up ? state_.dy - p.y : state_.dy + p.y}; }

NSRect Canvas::mapped(const NSRect &r) const {
    const NSPoint corner = mapped(NSPoint{r.minX(), state_.up ? r.maxY() : r.minY()});
    return {corner, r.size};
}

void Canvas::clipToRect(const NSRect &rect) { onClip(mapped(rect), 0); }
void Canvas::clipToRoundedRect(const NSRect &rect, double radius) { onClip(mapped(rect), radius); }

void Canvas::fillRect(const NSRect &rect, const std::shared_ptr<NSColor> &color) { fillRoundedRect(rect, 0, color); }

void Canvas::fillRoundedRect(const NSRect &rect, double radius, const std::shared_ptr<NSColor> &color) {
    if (color && !rect.isEmpty())
        onFill(mapped(rect), radius, *color);
}

void Canvas::strokeRect(const NSRect &rect, const std::shared_ptr<NSColor> &color, double lineWidth) {
    strokeRoundedRect(rect, 0, color, lineWidth);
}

void Canvas::strokeRoundedRect(const NSRect &rect, double radius, const std::shared_ptr<NSColor> &color, double lineWidth) {
    if (color && lineWidth > 0)
        onStroke(mapped(rect), radius, *color, lineWidth);
}

void Canvas::fillPolygon(const std::vector<NSPoint> &points, const std::shared_ptr<NSColor> &color) {
    if (!color || points.size() < 3)
        return;
    std::vector<NSPoint> own;
    std::ranges::transform(points, std::back_inserter(own), [this](NSPoint p) { return mapped(p); });
    onPolygon(own, *color, std::nullopt);
}

void Canvas::strokePolygon(const std::vector<NSPoint> &points, const std::shared_ptr<NSColor> &color, double lineWidth) {
    if (!color || points.size() < 3 || lineWidth <= 0)
        return;
    std::vector<NSPoint> own;
    std::ranges::transform(points, std::back_inserter(own), [this](NSPoint p) { return mapped(p); });
    onPolygon(own, *color, lineWidth);
}

void Canvas::strokeLine(NSPoint from, NSPoint to, const std::shared_ptr<NSColor> &color, double lineWidth) {
    if (color && lineWidth > 0)
        onLine(mapped(from), mapped(to), *color, lineWidth);
}

void Canvas::drawImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop, double alpha) {
    if (image && !rect.isEmpty())
        onImage(image, mapped(rect), crop ? crop : image->crop(), alpha);
}

void Canvas::drawText(const NSString &text, const NSRect &rect, const TextStyle &style) {
    if (!text.isEmpty())
        onText(text, nullptr, mapped(rect), style);
}

void Canvas::drawAttributedText(const std::shared_ptr<NSAttributedString> &text, const NSRect &rect, const TextStyle &style) {
    if (text && !text->string().isEmpty())
        onText(text->string(), text, mapped(rect), style);
}

// ---------------------------------------------------------------- RecordingCanvas

namespace {

std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.2f", std::round(value * 100) / 100 + 0.0);   // + 0.0: no "-0"
    std::string result(text);
    result.erase(result.find_last_not_of('0') + 1);
    if (result.back() == '.')
        result.pop_back();
    return result;
}

std::string describe(NSPoint point) { return number(point.x) + "," + number(point.y); }

std::string radiusText(double radius) { return radius > 0 ? " radius " + number(radius) : ""; }

std::string imageName(const NSImage &image) {
    if (!image.name().isEmpty())
        return image.name().str();
    return image.path().isEmpty() ? "data" : image.path().lastPathComponent().str();
}

constexpr const char *kAlignments[] = {"left", "right", "center", "justified", "natural"};

}  // namespace

std::string describe(const NSRect &rect) {
    return "[" + describe(rect.origin) + " " + number(rect.size.width) + "x" + number(rect.size.height) + "]";
}

std::string RecordingCanvas::take() {
    std::string all;
    for (const std::string &line : lines_)
        all += line + "\n";
    lines_.clear();
    return all;
}

void RecordingCanvas::onSave() { lines_.push_back("save"); }
void RecordingCanvas::onRestore() { lines_.push_back("restore"); }
void RecordingCanvas::onAlpha(double alpha) { lines_.push_back("alpha " + number(alpha)); }
void RecordingCanvas::onClip(const NSRect &rect, double radius) { lines_.push_back("clip " + describe(rect) + radiusText(radius)); }

void RecordingCanvas::onFill(const NSRect &rect, double radius, const NSColor &color) {
    lines_.push_back("fill " + describe(rect) + radiusText(radius) + " " + color.description().str());
}

void RecordingCanvas::onStroke(const NSRect &rect, double radius, const NSColor &color, double lineWidth) {
    lines_.push_back("stroke " + describe(rect) + radiusText(radius) + " " + color.description().str() + " " + number(lineWidth));
}

void RecordingCanvas::onPolygon(const std::vector<NSPoint> &points, const NSColor &color, std::optional<double> lineWidth) {
    std::string line = lineWidth ? "strokePolygon" : "fillPolygon";
    for (const NSPoint &point : points)
        line += " " + describe(point);
    lines_.push_back(line + " " + color.description().str() + (lineWidth ? " " + number(*lineWidth) : ""));
}

void RecordingCanvas::onLine(NSPoint from, NSPoint to, const NSColor &color, double lineWidth) {
    lines_.push_back("line " + describe(from) + " " + describe(to) + " " + color.description().str() + " " + number(lineWidth));
}

void RecordingCanvas::onImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop, double alpha) {
    lines_.push_back("image " + imageName(*image) + " " + describe(rect) + (crop ? " crop " + describe(*crop) : "") +
                     (alpha < 1 ? " alpha " + number(alpha) : ""));
}

void RecordingCanvas::onText(const NSString &text, const std::shared_ptr<NSAttributedString> &attributed, const NSRect &rect,
                             const TextStyle &style) {
    std::string line = "text \"" + text.str() + "\" " + describe(rect);
    if (style.font)
        line += " " + style.font->description().str();
    if (style.color)
        line += " " + style.color->description().str();
    line += std::string(" ") + kAlignments[static_cast<int>(style.alignment)];
    lines_.push_back(line + (attributed ? " attributed" : ""));
}

// A view's canvas on a QPainter. The painter's origin is the upper left corner of the view that paints; colours go through
// the theme; pictures are decoded for the painter's own pixels. Threads: main.
#pragma once

#include "host/window/Theme.h"
#include "toolkit/views/Canvas.h"

class QPainter;

namespace host {

class QtCanvas : public Canvas {
public:
    explicit QtCanvas(QPainter &painter, const Theme &theme = Theme::current()) : painter_(painter), theme_(theme) {}
    [[nodiscard]] QPainter &painter() { return painter_; }

protected:
    void onSave() override;
    void onRestore() override;
    void onAlpha(double alpha) override;
    void onClip(const NSRect &rect, double radius) override;
    void onFill(const NSRect &rect, double radius, const NSColor &color) override;
    void onStroke(const NSRect &rect, double radius, const NSColor &color, double lineWidth) override;
    void onPolygon(const std::vector<NSPoint> &points, const NSColor &color, std::optional<double> lineWidth) override;
    void onLine(NSPoint from, NSPoint to, const NSColor &color, double lineWidth) override;
    void onImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop, double alpha) override;
    void onText(const NSString &text, const std::shared_ptr<NSAttributedString> &attributed, const NSRect &rect,
                const TextStyle &style) override;

private:
    void paintLine(const QString &text, const QRectF &rect, const TextStyle &style);
    void paintParagraph(const QString &text, const std::shared_ptr<NSAttributedString> &attributed, const QRectF &rect,
                        const TextStyle &style);
    QPainter &painter_;
    Theme theme_;
};

}  // namespace host

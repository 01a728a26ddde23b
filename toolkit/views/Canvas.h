// Where a view paints. Coordinates are those of the view that paints; the base maps them to the canvas's own ones, which
// count from its upper left corner down, so that an implementer never meets an unflipped view.
//
// State    alpha, offset, flip and clip are saved and restored together, as a stack. Rects are mapped; pictures and texts
//          always stand upright.
// Colours  a null colour paints nothing. Threads: main.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/NSAttributedString.h"
#include "toolkit/NSGeometry.h"
#include "toolkit/NSImage.h"

enum class NSTextAlignment { left, right, center, justified, natural };
enum class LineBreak { wrap, truncateTail, truncateMiddle, clip };

struct TextStyle {
    std::shared_ptr<NSFont> font;
    std::shared_ptr<NSColor> color;
    NSTextAlignment alignment = NSTextAlignment::left;
    LineBreak lineBreak = LineBreak::wrap;
};

class Canvas {
public:
    virtual ~Canvas() = default;

    void saveState();
    // Does nothing where no state is saved.
    void restoreState();
    // Multiplies what is painted until the state is restored.
    void setAlpha(double alpha);
    void translate(double dx, double dy);
    // From now on y counts up from the lower edge of a space of this height (true), or down from its upper edge.
    void enterSpace(bool flipped, double height);
    // Cuts the clip down to the rectangle.
    void clipToRect(const NSRect &rect);
    void clipToRoundedRect(const NSRect &rect, double radius);

    void fillRect(const NSRect &rect, const std::shared_ptr<NSColor> &color);
    void strokeRect(const NSRect &rect, const std::shared_ptr<NSColor> &color, double lineWidth = 1);
    void fillRoundedRect(const NSRect &rect, double radius, const std::shared_ptr<NSColor> &color);
    void strokeRoundedRect(const NSRect &rect, double radius, const std::shared_ptr<NSColor> &color, double lineWidth = 1);
    // Closed; fewer than 3 points paint nothing.
    void fillPolygon(const std::vector<NSPoint> &points, const std::shared_ptr<NSColor> &color);
    void strokePolygon(const std::vector<NSPoint> &points, const std::shared_ptr<NSColor> &color, double lineWidth = 1);
    void strokeLine(NSPoint from, NSPoint to, const std::shared_ptr<NSColor> &color, double lineWidth = 1);
    // `crop` is in upright pixels of the picture; the part fills `rect`. A null picture paints nothing.
    void drawImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop = {}, double alpha = 1);
    void drawText(const NSString &text, const NSRect &rect, const TextStyle &style);
    // Runs without font or colour take the style's.
    void drawAttributedText(const std::shared_ptr<NSAttributedString> &text, const NSRect &rect, const TextStyle &style);

    // What the painting is multiplied with now.
    [[nodiscard]] double alpha() const { return state_.alpha; }

protected:
    // In the canvas's own coordinates: y down. Radius 0 is a plain rectangle.
    virtual void onSave() = 0;
    virtual void onRestore() = 0;
    virtual void onAlpha(double alpha) = 0;
    virtual void onClip(const NSRect &rect, double radius) = 0;
    virtual void onFill(const NSRect &rect, double radius, const NSColor &color) = 0;
    virtual void onStroke(const NSRect &rect, double radius, const NSColor &color, double lineWidth) = 0;
    virtual void onPolygon(const std::vector<NSPoint> &points, const NSColor &color, std::optional<double> lineWidth) = 0;
    virtual void onLine(NSPoint from, NSPoint to, const NSColor &color, double lineWidth) = 0;
    virtual void onImage(const std::shared_ptr<NSImage> &image, const NSRect &rect, std::optional<NSRect> crop, double alpha) = 0;
    // `attributed` is null for a plain text.
    virtual void onText(const NSString &text, const std::shared_ptr<NSAttributedString> &attributed, const NSRect &rect,
                        const TextStyle &style) = 0;

private:
    struct State {
        double dx = 0, dy = 0, alpha = 1;
        bool up = false;   // y counts up from dy
    };
    [[nodiscard]] NSPoint mapped(NSPoint p) const;
    [[nodiscard]] NSRect mapped(const NSRect &r) const;
    State state_;
    std::vector<State> saved_;
};

// Notes each step as one line, for tests: `fill [0,0 10x20] #FF0AB3CB`, `image icon_ok [0,0 16x16]`, `text "Ada" [..]`.
class RecordingCanvas : public Canvas {
public:
    [[nodiscard]] const std::vector<std::string> &lines() const { return lines_; }
    // All lines, each closed by a line feed; the list is empty afterwards.
    [[nodiscard]] std::string take();

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
    std::vector<std::string> lines_;
};

// "[x,y wxh]" with at most two decimals.
[[nodiscard]] std::string describe(const NSRect &rect);

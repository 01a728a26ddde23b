// The editors that lie over a text while it has the focus: input methods, caret, clipboard and undo are the system's. The
// view's text is the truth: a person's change goes in whole through typeText, a program's change shows at once.
// Threads: main.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

#include "host/window/NativePart.h"

class NSTextField;
class NSTextView;

namespace host {

// Of a field: one line, or a paragraph where the field is high.
class FieldPart final : public NativePart {
public:
    [[nodiscard]] static bool isWanted(NSView &view);
    [[nodiscard]] static std::unique_ptr<NativePart> make(ViewSurface &surface, const std::shared_ptr<NSView> &view);
    FieldPart(ViewSurface &surface, const std::shared_ptr<NSTextField> &field);
    ~FieldPart() override;

    void place(const QRectF &rect, const QRectF &visible) override;
    void viewChanged(std::string_view key) override;
    [[nodiscard]] QWidget *focusWidget() override { return editor_; }
    void clickedAt(const QPointF &surfacePoint) override;

private:
    void typed(const QString &text);
    void show();
    ViewSurface &surface_;
    std::weak_ptr<NSTextField> field_;
    QLineEdit *editor_;
};

// Of a text of several lines: a NSTextView, or a text field that is high enough for several.
class TextPart final : public NativePart {
public:
    [[nodiscard]] static bool isWanted(NSView &view);
    [[nodiscard]] static std::unique_ptr<NativePart> make(ViewSurface &surface, const std::shared_ptr<NSView> &view);
    TextPart(ViewSurface &surface, const std::shared_ptr<NSView> &view);
    ~TextPart() override;

    void place(const QRectF &rect, const QRectF &visible) override;
    void viewChanged(std::string_view key) override;
    [[nodiscard]] QWidget *focusWidget() override { return editor_; }
    void clickedAt(const QPointF &surfacePoint) override;

private:
    [[nodiscard]] NSString text() const;
    void typed();
    void show();
    std::weak_ptr<NSView> view_;
    QPlainTextEdit *editor_;
    bool isShowing_ = false;
};

}  // namespace host

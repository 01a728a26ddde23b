#include "host/window/FieldPart.h"

#include <QKeyEvent>

#include "host/window/KeyCodes.h"
#include "host/window/QtText.h"
#include "host/window/Theme.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSTextView.h"
#include "toolkit/views/NSWindow.h"

namespace host {

namespace {

// Keys that mean more than text: the view's own rules decide on them.
bool isCommand(const QKeyEvent &event, bool hasLines) {
    switch (event.key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
        return !hasLines;
    default:
        return false;
    }
}

// Hands command keys of an editor to the window, which gives them to the view that has the focus.
class CommandKeys : public QObject {
public:
    CommandKeys(QWidget &editor, ViewSurface &surface, bool hasLines) : QObject(&editor), surface_(surface), hasLines_(hasLines) {
        editor.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override {
        if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
            return false;
        auto *key = static_cast<QKeyEvent *>(event);
        if (!isCommand(*key, hasLines_))
            return false;
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        else if (key->key() != Qt::Key_Escape || !isEscaped())
            surface_.sendKey(*key);
        return true;
    }

private:
    bool isEscaped() {
        const auto field = surface_.window() ? std::dynamic_pointer_cast<NSTextField>(surface_.window()->firstResponder()) : nullptr;
        bool isTaken = false;
        if (field && surface_.escaped)
            dispatch::guarded("the escape key", [&] { isTaken = surface_.escaped(*field); });
        return isTaken;
    }
    ViewSurface &surface_;
    bool hasLines_;
};

void giveAway(QWidget *editor) {
    editor->disconnect();
    editor->hide();
    editor->deleteLater();   // this may run inside the editor's own signal
}

QPalette clearPalette() {
    QPalette palette = Theme::current().palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    return palette;
}

bool isHigh(const NSTextField &field) {
    constexpr double kLines = 2.4;
    return field.frame().size.height > kLines * TextMeasurer::current()->boundingRect("", field.font(), 0).height;
}

QString nameOf(const NSView &view, const NSString &placeholder) {
    return qtString(view.accessibilityName().isEmpty() ? placeholder : view.accessibilityName());
}

constexpr int kInset = 4, kArrow = 22;

}  // namespace

// ---------------------------------------------------------------- FieldPart

bool FieldPart::isWanted(NSView &view) {
    const auto &field = static_cast<NSTextField &>(view);
    return field.isEditable() && field.isEnabled() && view.window() && view.window()->firstResponder().get() == &view;
}

std::unique_ptr<NativePart> FieldPart::make(ViewSurface &surface, const std::shared_ptr<NSView> &view) {
    const auto field = std::dynamic_pointer_cast<NSTextField>(view);
    if (isHigh(*field) && !field->isSecure())
        return std::make_unique<TextPart>(surface, view);
    return std::make_unique<FieldPart>(surface, field);
}

FieldPart::FieldPart(ViewSurface &surface, const std::shared_ptr<NSTextField> &field)
    : surface_(surface), field_(field), editor_(new QLineEdit(&surface)) {
    editor_->setFrame(false);
    editor_->setPalette(clearPalette());
    editor_->setFont(qtFont(field->font()));
    const int inset = field->isBordered() ? kInset : 0;
    const int end = dynamic_cast<NSComboBox *>(field.get()) ? kArrow : inset;
    const bool isTurned = NSView::userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirection::rightToLeft;
    editor_->setLayoutDirection(Qt::LeftToRight);   // a surface's own; the side is told by the alignment
    editor_->setAlignment(Qt::AlignVCenter | Qt::AlignAbsolute | (isTurned ? Qt::AlignRight : Qt::AlignLeft));
    editor_->setTextMargins(isTurned ? end : inset, 0, isTurned ? inset : end, 0);
    if (field->isSecure())
        editor_->setEchoMode(QLineEdit::Password);
    editor_->setPlaceholderText(qtString(field->placeholderString()));
    editor_->setAccessibleName(nameOf(*field, field->placeholderString()));
    new CommandKeys(*editor_, surface, false);
    show();
    editor_->selectAll();
    QObject::connect(editor_, &QLineEdit::textEdited, editor_, [this](const QString &text) { typed(text); });
}

FieldPart::~FieldPart() { giveAway(editor_); }

void FieldPart::place(const QRectF &rect, const QRectF &visible) { placeWidget(*editor_, rect, visible); }

void FieldPart::typed(const QString &text) {
    const auto field = field_.lock();
    if (!field)
        return;
    const QPointer<QLineEdit> editor(editor_);   // what the delegate does may take the editor away
    dispatch::guarded("typing", [&] {
        field->typeText(toolkitString(text));
        if (editor && surface_.typed)
            surface_.typed(*field);
    });
    if (editor && qtString(field->stringValue()) != editor->text())
        show();
}

void FieldPart::show() {
    const auto field = field_.lock();
    if (!field)
        return;
    const QString text = qtString(field->stringValue());
    if (editor_->text() != text)
        editor_->setText(text);
}

void FieldPart::viewChanged(std::string_view key) {
    const auto field = field_.lock();
    if (!field)
        return;
    if (key == "selectedRange") {
        const NSRange range = field->selectedRange();
        const QString before = qtString(field->stringValue().substringToIndex(range.location));
        const QString chosen = qtString(field->stringValue().substringWithRange(range));
        editor_->setSelection(static_cast<int>(before.size()), static_cast<int>(chosen.size()));
    } else {
        show();
    }
}

void FieldPart::clickedAt(const QPointF &surfacePoint) {
    editor_->deselect();
    editor_->setCursorPosition(editor_->cursorPositionAt((surfacePoint - editor_->pos()).toPoint()));
}

// ---------------------------------------------------------------- TextPart

bool TextPart::isWanted(NSView &view) {
    return static_cast<NSTextView &>(view).isEditable() && view.window() && view.window()->firstResponder().get() == &view;
}

std::unique_ptr<NativePart> TextPart::make(ViewSurface &surface, const std::shared_ptr<NSView> &view) {
    return std::make_unique<TextPart>(surface, view);
}

TextPart::TextPart(ViewSurface &surface, const std::shared_ptr<NSView> &view) : view_(view), editor_(new QPlainTextEdit(&surface)) {
    editor_->setFrameShape(QFrame::NoFrame);
    editor_->setPalette(clearPalette());
    editor_->setTabChangesFocus(true);
    const auto *field = dynamic_cast<NSTextField *>(view.get());
    editor_->setFont(qtFont(field ? field->font() : static_cast<NSTextView &>(*view).font()));
    editor_->setAccessibleName(nameOf(*view, field ? field->placeholderString() : NSString()));
    new CommandKeys(*editor_, surface, true);
    show();
    QObject::connect(editor_, &QPlainTextEdit::textChanged, editor_, [this] { typed(); });
}

TextPart::~TextPart() { giveAway(editor_); }

void TextPart::place(const QRectF &rect, const QRectF &visible) { placeWidget(*editor_, rect, visible); }

NSString TextPart::text() const {
    const auto view = view_.lock();
    if (const auto field = std::dynamic_pointer_cast<NSTextField>(view))
        return field->stringValue();
    const auto text = std::dynamic_pointer_cast<NSTextView>(view);
    return text ? text->string() : NSString();
}

void TextPart::typed() {
    const auto view = view_.lock();
    if (!view || isShowing_)
        return;
    const QPointer<QPlainTextEdit> editor(editor_);
    const NSString text = toolkitString(editor_->toPlainText());
    dispatch::guarded("typing", [&] {
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(view))
            field->typeText(text);
        else
            std::dynamic_pointer_cast<NSTextView>(view)->typeText(text);
    });
    if (editor)
        show();
}

void TextPart::show() {
    const QString shown = qtString(text());
    if (editor_->toPlainText() == shown)
        return;
    isShowing_ = true;
    editor_->setPlainText(shown);
    isShowing_ = false;
}

void TextPart::viewChanged(std::string_view) { show(); }

void TextPart::clickedAt(const QPointF &surfacePoint) {
    editor_->setTextCursor(editor_->cursorForPosition((surfacePoint - editor_->pos()).toPoint()));
}

}  // namespace host

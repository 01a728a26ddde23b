#include "host/window/Accessibility.h"

#include <QAccessibleWidget>

#include <map>
#include <vector>

#include "host/window/QtText.h"
#include "host/window/ViewSurface.h"
#include "toolkit/dispatch/Guard.h"
#include "toolkit/tables/NSTableView.h"
#include "toolkit/views/NSComboBox.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSPopUpButton.h"
#include "toolkit/views/NSProgressIndicator.h"
#include "toolkit/views/NSScrollView.h"
#include "toolkit/views/NSSegmentedControl.h"
#include "toolkit/views/NSTextView.h"
#include "toolkit/views/NSWindow.h"

namespace host {

namespace {

// ---------------------------------------------------------------- what a view is

struct Kind {
    const ClassTable &base;
    QAccessible::Role role;
    bool isControl;    // a person does something with it, so it must have a name
    bool hasChildren;  // what stands in it is told too
};

const Kind *kindOf(const NSView &view) {
    static const Kind kinds[] = {
        {NSPopUpButton::sharedTable(), QAccessible::ButtonMenu, true, false},
        {NSButton::sharedTable(), QAccessible::PushButton, true, false},
        {NSComboBox::sharedTable(), QAccessible::ComboBox, true, false},
        {NSTextField::sharedTable(), QAccessible::StaticText, false, false},
        {NSTextView::sharedTable(), QAccessible::EditableText, false, false},
        {NSImageView::sharedTable(), QAccessible::Graphic, false, false},
        {NSProgressIndicator::sharedTable(), QAccessible::ProgressBar, false, false},
        {NSSegmentedControl::sharedTable(), QAccessible::PageTabList, true, false},
        {NSTableView::sharedTable(), QAccessible::Table, true, true},
        {NSTableRowView::sharedTable(), QAccessible::Row, false, true},
    };
    for (const ClassTable *table = &view.classTable(); table; table = table->base())
        for (const Kind &kind : kinds)
            if (&kind.base == table)
                return &kind;
    return nullptr;
}

bool isEditable(const NSView &view) {
    const auto *field = dynamic_cast<const NSTextField *>(&view);
    return field && field->isEditable();
}

bool isControl(const NSView &view, const Kind &kind) { return kind.isControl || isEditable(view); }

QAccessible::Role roleOf(const NSView &view, const Kind &kind) {
    if (const auto *button = dynamic_cast<const NSButton *>(&view)) {
        if (button->buttonType() == NSButtonType::switchButton)
            return QAccessible::CheckBox;
        if (button->buttonType() == NSButtonType::radio)
            return QAccessible::RadioButton;
    }
    return kind.role == QAccessible::StaticText && isEditable(view) ? QAccessible::EditableText : kind.role;
}

// A label without a text, a picture without a name: nothing to tell.
bool isSilent(NSView &view, const Kind &kind) {
    const bool mayBe = kind.role == QAccessible::StaticText || kind.role == QAccessible::Graphic;
    return mayBe && !isEditable(view) && accessibleNameOf(view).empty();
}

// The told views below a view; layout views are passed through.
std::vector<std::shared_ptr<NSView>> toldBelow(NSView &view) {
    std::vector<std::shared_ptr<NSView>> told;
    for (const auto &subview : view.subviews()) {
        if (subview->isHidden())
            continue;
        const Kind *kind = kindOf(*subview);
        if (kind && !isSilent(*subview, *kind)) {
            told.push_back(subview);
        } else if (!kind) {
            const auto below = toldBelow(*subview);
            told.insert(told.end(), below.begin(), below.end());
        }
    }
    return told;
}

std::string textsIn(NSView &view) {
    std::string texts;
    for (const auto &told : toldBelow(view))
        if (const auto field = std::dynamic_pointer_cast<NSTextField>(told); field && !field->stringValue().isEmpty())
            texts += (texts.empty() ? "" : ", ") + field->stringValue().str();
    return texts;
}

QString valueOf(const NSView &view) {
    if (const auto *field = dynamic_cast<const NSTextField *>(&view))
        return field->isEditable() && !field->isSecure() ? qtString(field->stringValue()) : QString();
    if (const auto *text = dynamic_cast<const NSTextView *>(&view))
        return qtString(text->string());
    if (const auto *progress = dynamic_cast<const NSProgressIndicator *>(&view))
        return progress->isIndeterminate() ? QString() : QString::number(progress->doubleValue());
    if (const auto *popUp = dynamic_cast<const NSPopUpButton *>(&view))
        return qtString(popUp->titleOfSelectedItem());
    return {};
}

// ---------------------------------------------------------------- one view

class AccessibleView : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    explicit AccessibleView(const std::shared_ptr<NSView> &view, QPointer<ViewSurface> surface) : view_(view), surface_(std::move(surface)) {}

    // The one interface of a view, made when first asked for.
    static QAccessibleInterface *of(const std::shared_ptr<NSView> &view, ViewSurface &surface);

    bool isValid() const override { return surface_ && !view_.expired() && view_.lock()->window(); }
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int x, int y) const override {
        for (int i = 0; i < childCount(); ++i)
            if (QAccessibleInterface *one = child(i); one && one->rect().contains(x, y))
                return one;
        return nullptr;
    }
    QAccessibleInterface *parent() const override {
        const auto view = view_.lock();
        for (auto above = view ? view->superview() : nullptr; above; above = above->superview())
            if (kindOf(*above))
                return of(above, *surface_);
        return surface_ ? QAccessible::queryAccessibleInterface(surface_) : nullptr;
    }
    QAccessibleInterface *child(int index) const override {
        const auto below = children();
        return index >= 0 && index < static_cast<int>(below.size()) ? of(below[static_cast<std::size_t>(index)], *surface_) : nullptr;
    }
    int childCount() const override { return static_cast<int>(children().size()); }
    int indexOfChild(const QAccessibleInterface *child) const override {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }
    QString text(QAccessible::Text what) const override {
        const auto view = view_.lock();
        if (!view)
            return {};
        switch (what) {
        case QAccessible::Name:
            return QString::fromStdString(accessibleNameOf(*view));
        case QAccessible::Value:
            return valueOf(*view);
        case QAccessible::Help:
        case QAccessible::Description:
            return qtString(view->toolTip());
        default:
            return {};
        }
    }
    void setText(QAccessible::Text what, const QString &text) override {
        const auto field = std::dynamic_pointer_cast<NSTextField>(view_.lock());
        if (what == QAccessible::Value && field)
            dispatch::guarded("typing", [&] { field->typeText(toolkitString(text)); });
    }
    QRect rect() const override {
        const auto view = view_.lock();
        return view && surface_ ? surface_->rectOf(*view).toAlignedRect().translated(surface_->mapToGlobal(QPoint())) : QRect();
    }
    QAccessible::Role role() const override {
        const auto view = view_.lock();
        const Kind *kind = view ? kindOf(*view) : nullptr;
        return kind ? roleOf(*view, *kind) : QAccessible::NoRole;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        const auto view = view_.lock();
        if (!view)
            return state;
        if (const auto control = std::dynamic_pointer_cast<NSControl>(view))
            state.disabled = !control->isEnabled();
        if (const auto button = std::dynamic_pointer_cast<NSButton>(view)) {
            state.checkable = button->buttonType() != NSButtonType::momentaryPushIn;
            state.checked = button->state() == NSOnState;
            state.checkStateMixed = button->state() == NSMixedState;
        }
        if (const auto row = std::dynamic_pointer_cast<NSTableRowView>(view)) {
            state.selectable = true;
            state.selected = row->isSelected();
        }
        state.focusable = view->acceptsFirstResponder();
        state.focused = view->window() && view->window()->firstResponder() == view;
        state.readOnly = !isEditable(*view);
        state.passwordEdit = dynamic_cast<NSTextField *>(view.get()) && static_cast<NSTextField &>(*view).isSecure();
        state.offscreen = view->visibleRect().isEmpty();
        return state;
    }
    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

    QStringList actionNames() const override {
        const auto view = view_.lock();
        if (std::dynamic_pointer_cast<NSButton>(view))
            return {pressAction()};
        return view && view->acceptsFirstResponder() ? QStringList{setFocusAction()} : QStringList();
    }
    void doAction(const QString &name) override {
        const auto view = view_.lock();
        if (const auto button = std::dynamic_pointer_cast<NSButton>(view); button && name == pressAction())
            dispatch::guarded("a press by a screen reader", [&] { button->performClick(); });
        else if (view && view->window() && name == setFocusAction())
            view->window()->makeFirstResponder(view);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    [[nodiscard]] std::vector<std::shared_ptr<NSView>> children() const {
        const auto view = view_.lock();
        const Kind *kind = view ? kindOf(*view) : nullptr;
        return kind && kind->hasChildren ? toldBelow(*view) : std::vector<std::shared_ptr<NSView>>();
    }
    std::weak_ptr<NSView> view_;
    QPointer<ViewSurface> surface_;
};

// By address; an entry whose view has gone is replaced or swept.
std::map<const NSView *, std::pair<std::weak_ptr<NSView>, QAccessible::Id>> &known() {
    static std::map<const NSView *, std::pair<std::weak_ptr<NSView>, QAccessible::Id>> interfaces;
    return interfaces;
}

void sweep() {
    std::erase_if(known(), [](const auto &entry) {
        const bool hasGone = entry.second.first.expired();
        if (hasGone)
            QAccessible::deleteAccessibleInterface(entry.second.second);
        return hasGone;
    });
}

QAccessibleInterface *AccessibleView::of(const std::shared_ptr<NSView> &view, ViewSurface &surface) {
    const auto found = known().find(view.get());
    if (found != known().end() && !found->second.first.expired())
        return QAccessible::accessibleInterface(found->second.second);
    sweep();
    auto *made = new AccessibleView(view, &surface);
    known()[view.get()] = {view, QAccessible::registerAccessibleInterface(made)};
    return made;
}

// ---------------------------------------------------------------- the surface

class AccessibleSurface : public QAccessibleWidget {
public:
    explicit AccessibleSurface(ViewSurface *surface) : QAccessibleWidget(surface, QAccessible::Pane) {}

    int childCount() const override { return static_cast<int>(views().size()) + QAccessibleWidget::childCount(); }
    QAccessibleInterface *child(int index) const override {
        const auto told = views();
        const int count = static_cast<int>(told.size());
        return index < count ? AccessibleView::of(told[static_cast<std::size_t>(index)], surface()) : QAccessibleWidget::child(index - count);
    }
    int indexOfChild(const QAccessibleInterface *child) const override {
        for (int i = 0; i < childCount(); ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        const auto view = surface().viewAt(surface().mapFromGlobal(QPoint(x, y)));
        for (auto above = view; above; above = above->superview())
            if (kindOf(*above))
                return AccessibleView::of(above, surface());
        return nullptr;
    }
    QString text(QAccessible::Text what) const override {
        const auto window = surface().window();
        return what == QAccessible::Name && window ? qtString(window->title()) : QAccessibleWidget::text(what);
    }

private:
    [[nodiscard]] ViewSurface &surface() const { return *static_cast<ViewSurface *>(widget()); }
    [[nodiscard]] std::vector<std::shared_ptr<NSView>> views() const {
        const auto window = surface().window();
        return window && window->contentView() ? toldBelow(*window->contentView()) : std::vector<std::shared_ptr<NSView>>();
    }
};

QAccessibleInterface *makeInterface(const QString &, QObject *object) {
    auto *surface = dynamic_cast<ViewSurface *>(object);
    return surface ? new AccessibleSurface(surface) : nullptr;
}

const char *wordOf(QAccessible::Role role) {
    switch (role) {
    case QAccessible::PushButton: return "button";
    case QAccessible::ButtonMenu: return "menu button";
    case QAccessible::CheckBox: return "check box";
    case QAccessible::RadioButton: return "radio button";
    case QAccessible::EditableText: return "text field";
    case QAccessible::StaticText: return "text";
    case QAccessible::ComboBox: return "combo box";
    case QAccessible::Table: return "table";
    case QAccessible::Row: return "row";
    case QAccessible::Graphic: return "picture";
    case QAccessible::ProgressBar: return "progress";
    case QAccessible::PageTabList: return "choice";
    default: return "thing";
    }
}

void dump(NSView &view, std::size_t depth, std::string &text) {
    const Kind &kind = *kindOf(view);
    const std::string name = accessibleNameOf(view), value = valueOf(view).toStdString();
    text += std::string(2 * depth, ' ') + wordOf(roleOf(view, kind));
    text += name.empty() ? (isControl(view, kind) ? " unnamed " + view.className().str() + " #" + view.identifier().str() : "") : " \"" + name + "\"";
    text += value.empty() || value == name ? "" : " = " + value;
    const auto *control = dynamic_cast<const NSControl *>(&view);
    text += control && !control->isEnabled() ? " disabled\n" : "\n";
    if (kind.hasChildren)
        for (const auto &below : toldBelow(view))
            dump(*below, depth + 1, text);
}

// A bare box or button in a row speaks of that row, one in a header of all rows.
std::string nameByPlace(NSView &view) {
    for (auto above = view.superview(); above; above = above->superview()) {
        if (dynamic_cast<NSTableRowView *>(above.get()))
            return textsIn(*above);
        if (dynamic_cast<NSTableHeaderView *>(above.get()))
            return QObject::tr("All rows").toStdString();
    }
    return {};
}

}  // namespace

std::string accessibleNameOf(NSView &view) {
    if (!view.accessibilityName().isEmpty())
        return view.accessibilityName().str();
    NSString name;
    if (const auto *popUp = dynamic_cast<const NSPopUpButton *>(&view))
        name = popUp->pullsDown() && popUp->numberOfItems() > 0 ? popUp->itemArray().front()->title : popUp->titleOfSelectedItem();
    else if (const auto *button = dynamic_cast<const NSButton *>(&view))
        name = button->attributedTitle() ? button->attributedTitle()->string() : button->title();
    else if (const auto *field = dynamic_cast<const NSTextField *>(&view))
        name = field->isEditable() ? field->placeholderString() : field->stringValue();
    else if (dynamic_cast<const NSTableRowView *>(&view))
        return textsIn(view);
    else if (const auto *segments = dynamic_cast<const NSSegmentedControl *>(&view))
        name = segments->labelForSegment(segments->selectedSegment());
    if (name.isEmpty() && dynamic_cast<const NSButton *>(&view) && view.toolTip().isEmpty())
        return nameByPlace(view);
    return name.isEmpty() ? view.toolTip().str() : name.str();
}

void installAccessibility() { QAccessible::installFactory(makeInterface); }

std::string accessibilityDump(ViewSurface &surface) {
    std::string text;
    if (const auto window = surface.window(); window && window->contentView())
        for (const auto &view : toldBelow(*window->contentView()))
            dump(*view, 0, text);
    return text;
}

}  // namespace host

#include "HNManagerPlugin/Resources/Nibs/NibParts.h"

#include "HNManagerPlugin/Classes/SubItemViewController/HNMbaseViewController.h"
#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSImageView.h"
#include "toolkit/views/NSScrollView.h"

namespace nibParts {

void place(const std::shared_ptr<NSView> &root, const std::shared_ptr<NSView> &view, const Placing &placing) {
    using A = NSLayoutAttribute;
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    root->addSubview(view);
    const auto edge = [&](A attribute, const std::optional<double> &distance, double sign) {
        if (distance)
            root->addConstraint(NSLayoutConstraint::tie(view, attribute, root, attribute, sign * *distance));
    };
    const auto size = [&](A attribute, const std::optional<double> &points) {
        if (points)
            view->addConstraint(NSLayoutConstraint::tie(view, attribute, nullptr, A::notAnAttribute, *points));
    };
    edge(A::leading, placing.left, 1);
    edge(A::top, placing.top, 1);
    edge(A::trailing, placing.right, -1);
    edge(A::bottom, placing.bottom, -1);
    size(A::width, placing.width);
    size(A::height, placing.height);
}

std::shared_ptr<NSTextField> label(const char *identifier, double size) {
    auto line = NSTextField::labelWithString("");
    line->setIdentifier(identifier);
    line->setFont(NSFont::fontWithName_size("Helvetica Neue", size));
    line->setLineBreakMode(LineBreak::truncateTail);
    return line;
}

void enabledBy(Property<bool> &flag, const std::shared_ptr<NSControl> &control) {
    flag.observe([weak = std::weak_ptr(control)](const bool &on) { tell(weak, [on](NSControl &c) { c.setEnabled(on); }); });
}

// ---------------------------------------------------------------- the top bar

std::shared_ptr<RUIButton> button(Nib &nib, const Manager &manager, const ButtonPlace &place) {
    auto made = nib.make<RUIButton>(NSRect(0, 0, 110, 28));
    made->setIdentifier(place.identifier);
    made->connect(manager, place.selector);
    ((*manager).*place.title).observe(showsIn<NSButton>(made, &NSButton::setTitle));
    return made;
}

std::shared_ptr<NSMenuItem> menuEntry(const std::shared_ptr<NSMenu> &menu, const Manager &manager, const char *selector,
                                      Property<NSString> &title) {
    auto item = make<NSMenuItem>(NSString(), selector);
    item->target = manager;
    menu->addItem(item);
    title.observe([weak = std::weak_ptr(item)](const NSString &text) { tell(weak, [&](NSMenuItem &i) { i.title = text; }); });
    return item;
}

std::shared_ptr<NSStackView> topBar(Nib &nib, const char *identifier) {
    auto bar = nib.make<NSStackView>(NSRect(0, 0, kWidth, kTopBar));
    bar->setIdentifier(identifier);
    bar->setSpacing(8);
    bar->setEdgeInsets({16, 16, 16, 16});
    return bar;
}

std::shared_ptr<NSTextField> searchField(Nib &nib, const Manager &manager, const char *selector) {
    auto search = nib.make<NSTextField>(NSRect(0, 0, 180, 28));
    search->setIdentifier("SearchField");
    search->setAccessibilityName(localized("FileManager_Search"));
    search->connect(manager, selector);
    search->setContentHuggingPriority(200);
    manager->searchField = search;
    return search;
}

// ---------------------------------------------------------------- below it

std::shared_ptr<NSView> scrolling(Nib &nib, const std::shared_ptr<NSView> &list, double width) {
    auto scroll = nib.make<NSScrollView>(NSRect(0, 0, width, kList));
    scroll->setDocumentView(list);
    scroll->setHasVerticalScroller(true);
    return scroll;
}

std::shared_ptr<NSView> bottomBar(Nib &nib, const Manager &manager) {
    auto bar = nib.make<NSView>(NSRect(0, 0, kWidth, kBottomBar));
    bar->setIdentifier("BottomBar");
    const auto status = label("StatusLine");
    place(bar, status, {.left = 16, .top = 8, .right = 16, .bottom = 8});
    manager->tableRowInfoString.observe(showsIn<NSControl>(status, &NSControl::setStringValue));
    manager->buttomView = bar;
    return bar;
}

namespace {

// As large as told, whatever it shows.
void setSize(const std::shared_ptr<NSView> &view, double width, double height) {
    view->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::width, nullptr, NSLayoutAttribute::notAnAttribute, width));
    view->addConstraint(NSLayoutConstraint::tie(view, NSLayoutAttribute::height, nullptr, NSLayoutAttribute::notAnAttribute, height));
}

std::shared_ptr<NSStackView> column(Nib &nib, NSStackAlignment alignment) {
    auto made = nib.make<NSStackView>(NSRect(0, 0, 1, 1));
    made->setOrientation(NSUserInterfaceLayoutOrientation::vertical);
    made->setAlignment(alignment);
    made->setSpacing(12);
    return made;
}

// A text with its picture below.
std::shared_ptr<NSView> cloudStep(Nib &nib, const char *identifier, Property<NSString> &text, Property<NSString> &path) {
    constexpr double kStepWidth = 235, kPicture = 152, kLines = 54;
    const auto field = label(identifier);
    field->setLineBreakMode(LineBreak::wrap);
    field->setAlignment(NSTextAlignment::center);
    setSize(field, kStepWidth, kLines);
    text.observe(showsIn<NSControl>(field, &NSControl::setStringValue));
    const auto picture = nib.make<NSImageView>(NSRect(0, 0, kStepWidth, kPicture));
    setSize(picture, kStepWidth, kPicture);
    path.observe([weak = std::weak_ptr(picture)](const NSString &file) {
        tell(weak, [&](NSImageView &v) { v.setImage(file.isEmpty() ? nullptr : NSImage::withContentsOfFile(file)); });
    });
    auto step = column(nib, NSStackAlignment::center);
    step->addArrangedSubview(field);
    step->addArrangedSubview(picture);
    return step;
}

}   // namespace

void cloudPanel(Nib &nib, const Manager &manager, const char *retrySelector) {
    const auto panel = column(nib, NSStackAlignment::center);
    panel->setFrame({0, 0, kWidth, kHeight - kTopBar});
    panel->setIdentifier("CloudPanel");
    panel->setEdgeInsets({32, 16, 16, 16});
    panel->setWantsLayer(true);
    panel->layer()->setBackgroundColor(NSColor::whiteColor());
    const auto title = label("CloudTitle");
    manager->close_iCloud_title.observe(showsIn<NSControl>(title, &NSControl::setStringValue));
    const auto steps = nib.make<NSStackView>(NSRect(0, 0, 1, 1));
    steps->setSpacing(16);
    steps->addArrangedSubview(cloudStep(nib, "CloudStep1", manager->close_iCloud_Step_1, manager->disable_icloudImagePath_1));
    steps->addArrangedSubview(cloudStep(nib, "CloudStep2", manager->close_iCloud_Step_2, manager->disable_icloudImagePath_2));
    steps->addArrangedSubview(cloudStep(nib, "CloudStep3", manager->close_iCloud_Step_3, manager->disable_icloudImagePath_3));
    panel->addArrangedSubview(title);
    panel->addArrangedSubview(steps);
    panel->addArrangedSubview(button(nib, manager, {"RetryButton", &HNMbaseViewManager::retryTitle, retrySelector}));
    manager->disable_iCloudView = panel;
}

void setView(Nib &nib, const std::shared_ptr<NSView> &root, const Manager &manager, const std::shared_ptr<HNMbaseViewModel> &model) {
    manager->contentView = root;
    nib.setView(root);
    if (const auto owner = nib.owner<HNMbaseViewController>()) {
        owner->viewManager = manager;
        owner->viewModel = model;
    }
}

// ---------------------------------------------------------------- input windows

DialogButtons dialogButtons(Nib &nib, const std::shared_ptr<NSObject> &owner, double width, const char *cancelSelector,
                            const char *saveSelector) {
    const auto made = [&](double x, const char *identifier, const char *key, const char *selector) {
        auto button = nib.make<RUIButton>(NSRect(x, 16, 104, 28));
        button->setIdentifier(identifier);
        button->setKeyEquivalent(key);
        button->connect(owner, selector);
        return button;
    };
    DialogButtons buttons{made(width - 244, "cancelButton", "\x1b", cancelSelector), made(width - 128, "saveButton", "\r", saveSelector)};
    buttons.cancel->setBorderColor(UIThemeColor());
    return buttons;
}

}   // namespace nibParts

#include "HNManagerPlugin/contracts/RVUIKit/RUIProgressWindowController.h"

#include "HNManagerPlugin/contracts/RVUIKit/RUIWindow.h"
#include "HNManagerPlugin/contracts/RVUIKit/UIThemeColor.h"
#include "toolkit/views/NSApplication.h"

HN_CLASS_TABLE(RUIProgressWindowController, NSWindowController,
    .key("mainText", [](NSObject &o) { return Value(static_cast<RUIProgressWindowController &>(o).mainText()); })
    .selector("onButtonClick:", &RUIProgressWindowController::onButtonClick))

RUIProgressWindowController::Controls::Controls()
    : mainLabel(NSTextField::labelWithString("")), subLabel(NSTextField::labelWithString("")),
      progressIndicator(make<NSProgressIndicator>(NSRect(24, 84, 432, 8))),
      loadingIndicator(make<NSProgressIndicator>(NSRect(440, 130, 16, 16))), borderButton(make<RUIButton>(NSRect(352, 16, 104, 28))),
      colorButton(make<RUIButton>(NSRect(200, 16, 140, 28))), linkLabel(make<RUILinkTextField>(NSRect(24, 24, 170, 20))) {
    mainLabel->setFrame({24, 100, 408, 48});
    subLabel->setFrame({24, 56, 432, 20});
    loadingIndicator->setIndeterminate(true);
    loadingIndicator->setSpinningStyle(true);
    loadingIndicator->setDisplayedWhenStopped(false);
    borderButton->setBorderColor(UIThemeColor());
    linkLabel->setHidden(true);
}

struct ProgressWindowNib {
    static void build(Nib &nib) {
        const auto owner = nib.owner<RUIProgressWindowController>();
        const auto window = nib.make<RUIWindow>(NSRect(0, 0, 480, 164));
        const auto place = [&](const std::shared_ptr<NSView> &view, const char *identifier) {
            view->setIdentifier(identifier);
            window->contentView()->addSubview(view);
        };
        RUIProgressWindowController::Controls &controls = owner->controls_;
        place(controls.mainLabel, "mainLabel");
        place(controls.loadingIndicator, "loadingIndicator");
        place(controls.progressIndicator, "progressIndicator");
        place(controls.subLabel, "subLabel");
        place(controls.linkLabel, "linkLabel");
        place(controls.colorButton, "colorButton");
        place(controls.borderButton, "borderButton");
        for (const auto &button : {controls.colorButton, controls.borderButton})
            button->connect(owner, "onButtonClick:");
        window->setDelegate(owner);
        window->center();
        nib.setWindow(window);
    }
    static const NibRegistry::Entry entry;
};
const NibRegistry::Entry ProgressWindowNib::entry("RUIProgressWindowController", ProgressWindowNib::build);

void RUIProgressWindowController::showWindow(const WindowBlock &setUp) {
    const auto controller = make<RUIProgressWindowController>();
    const auto window = controller->window();
    window->makeKeyAndOrderFront();
    setUp(controller);
    if (!controller->isClosed())
        NSApp()->runModalForWindow(window);
    controller->close();
    controller->forgetBlocks();
}

void RUIProgressWindowController::windowDidLoad() {
    NSWindowController::windowDidLoad();
    if (const WindowBlock block = windowDidLoad_)
        block(selfOf(this));
}

bool RUIProgressWindowController::windowShouldClose(NSWindow &) {
    const WillCloseBlock block = willClose_;
    return block ? block() : true;
}

void RUIProgressWindowController::windowWillClose(NSWindow &) {
    if (isClosed_)
        return;
    lastMainText_ = mainLabel()->stringValue();
    isClosed_ = true;
    controls_ = Controls();
    forgetBlocks();
}

void RUIProgressWindowController::onButtonClick(const id &sender) {
    const ButtonBlock block = buttonDidClick_;
    if (const auto button = std::dynamic_pointer_cast<NSButton>(sender); button && block)
        block(button);
}

void RUIProgressWindowController::forgetBlocks() {
    // Moved out first: what the blocks own may call back while it ends.
    const auto willClose = std::move(willClose_);
    const auto buttonDidClick = std::move(buttonDidClick_);
    const auto windowDidLoad = std::move(windowDidLoad_);
    willClose_ = {};
    buttonDidClick_ = {};
    windowDidLoad_ = {};
}

void RUIProgressWindowController::dealloc() {
    forgetBlocks();
    NSWindowController::dealloc();
}

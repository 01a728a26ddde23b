#include "toolkit/views/Presenter.h"

#include "toolkit/dispatch/Queue.h"
#include "toolkit/views/NSApplication.h"
#include "toolkit/views/NSSavePanel.h"

namespace {

class CancelsEverything final : public Presenter {
public:
    void windowDidOpen(NSWindow &window, bool modal) override {
        if (modal)
            dispatch::async(dispatch::main(), [link = linkTo(window)] { tell(link, closeOrAbort); });
    }
    void panelDidOpen(NSSavePanel &panel) override {
        dispatch::async(dispatch::main(), [link = linkTo(panel)] { tell(link, [](NSWindow &held) { static_cast<NSSavePanel &>(held).cancel(); }); });
    }

private:
    static std::weak_ptr<NSWindow> linkTo(NSWindow &window) { return std::static_pointer_cast<NSWindow>(window.shared_from_this()); }
    static void closeOrAbort(NSWindow &window) {
        window.performClose();
        const auto application = NSApplication::sharedApplication();
        if (application->isModal(window) && application->modalWindow().get() == &window)
            application->abortModal();
    }
};

std::shared_ptr<Presenter> &installed() {
    static std::shared_ptr<Presenter> presenter = std::make_shared<CancelsEverything>();
    return presenter;
}

}  // namespace

std::shared_ptr<Presenter> Presenter::current() { return installed(); }

void Presenter::install(std::shared_ptr<Presenter> presenter) {
    installed() = presenter ? std::move(presenter) : std::make_shared<CancelsEverything>();
}

#include "HNManagerPlugin/Classes/PublicProgressWindow/ProgressWindowHost.h"

#include "HNManagerPlugin/Classes/PublicProgressWindow/Dialogs.h"
#include "toolkit/views/NSApplication.h"

namespace {

std::shared_ptr<NSMutableDictionary> contentsOf(const NSString &title, const Value &up, const Value &down) {
    const auto contents = make<NSMutableDictionary>();
    contents->setObject_forKey(title, "title");
    contents->setObject_forKey(up, "upText");
    contents->setObject_forKey(down, "downText");
    return contents;
}

std::shared_ptr<NSAttributedString> lineOf(const Value &value) {
    if (const auto attributed = std::dynamic_pointer_cast<NSAttributedString>(value.object()))
        return attributed;
    return make<NSAttributedString>(value.text());
}

}  // namespace

std::shared_ptr<NSMutableDictionary> ProgressWindowHost::progressWindowString_upText_downText(const NSString &title, const NSString &up,
                                                                                              const NSString &down) const {
    return contentsOf(title, up, down);
}

std::shared_ptr<NSMutableDictionary> ProgressWindowHost::progressWindowArrtibuteString_upText_downText(
    const NSString &title, const std::shared_ptr<NSAttributedString> &up, const std::shared_ptr<NSAttributedString> &down) const {
    return contentsOf(title, up, down);
}

void ProgressWindowHost::showProgressWindow(const std::shared_ptr<NSMutableDictionary> &contents) {
    if (!pProressWindow)
        pProressWindow = make<HNMPublicProgressWindow>();
    // The run may end with the host's own reference gone.
    const std::shared_ptr<HNMPublicProgressWindow> shown = pProressWindow;
    shown->isClosed = false;
    const auto window = shown->window();
    window->setTitle(contents->objectForKey("title").text());
    tell(shown->upTextField, [&](NSTextField &line) { line.setAttributedStringValue(lineOf(contents->objectForKey("upText"))); });
    tell(shown->downTextField, [&](NSTextField &line) { line.setAttributedStringValue(lineOf(contents->objectForKey("downText"))); });
    tell(shown->progress, [](RUISimpleProgressView &bar) { bar.setProgressValue(0); });
    pDelegate = shown;
    NSApp()->runModalForWindow(window);
}

void ProgressWindowHost::closeProgressWindow() {
    if (pProressWindow)
        pProressWindow->close();
    NSApp()->stopModal();
    pProressWindow = nullptr;
}

std::int64_t ProgressWindowHost::openOperationResultWindowContents_type(const std::shared_ptr<NSMutableDictionary> &contents,
                                                                        std::int64_t type) const {
    const auto text = [&](const char *key) { return contents->objectForKey(key).text(); };
    return dialogs::run(text("Title"), text("Contents"), text("iconName"), text("leftButtonTitle"), text("rightButtonTitle"), type);
}

#include "host/window/RepeatNotices.h"

#include <QObject>

#include "host/window/ForeignFiles.h"
#include "host/window/Notices.h"
#include "toolkit/dispatch/Queue.h"
#include "toolkit/lists/NSMutableArray.h"
#include "toolkit/views/NSSavePanel.h"

namespace host {

namespace {

NSArray allContacts(const id &model) {
    const auto all = model ? std::dynamic_pointer_cast<NSMutableArray>(model->valueForKey("globalArray").object()) : nullptr;
    return all ? all->snapshot() : NSArray();
}

}  // namespace

std::shared_ptr<RepeatNotices> RepeatNotices::install(std::function<id()> model, std::function<bool()> hasLoaded) {
    const auto notices = std::make_shared<RepeatNotices>();
    notices->model_ = std::move(model);
    notices->hasLoaded_ = std::move(hasLoaded);
    ViewObserver::add(notices);
    return notices;
}

void RepeatNotices::remove() {
    ViewObserver::remove(shared_from_this());
    model_ = {};
}

void RepeatNotices::windowChanged(NSWindow &window, std::string_view key) {
    const auto *panel = key == "visible" && !window.isVisible() ? dynamic_cast<NSOpenPanel *>(&window) : nullptr;
    if (!panel || !takesContacts(*panel) || panel->URL().isNil())
        return;
    Import import{model_(), {}};
    for (const id &contact : allContacts(import.model.lock()))
        import.before.insert(contact->valueForKey("pKey").text());
    if (import.before.empty())
        return;
    whenQuiet([link = weak_from_this(), import = std::move(import)]() mutable {
        if (const auto self = link.lock()) {
            self->ended_ = std::move(import);
            self->tellIfLoaded();
        }
    });
}

void RepeatNotices::propertyChanged(NSView &, std::string_view) {
    if (!ended_ || !hasLoaded_())
        return;
    // The load ends with this block: only then all of it stands.
    dispatch::async(dispatch::main(), [link = weak_from_this()] {
        if (const auto self = link.lock())
            self->tellIfLoaded();
    });
}

void RepeatNotices::tellIfLoaded() {
    if (!ended_ || !model_ || !hasLoaded_())
        return;
    const Import import = *std::exchange(ended_, std::nullopt);
    const id model = model_();
    if (model && model == import.model.lock())   // not where another device or category has come
        tell(model, import.before);
}

void RepeatNotices::tell(const id &model, const std::set<NSString> &before) const {
    Value::List fresh, old;
    for (const id &contact : allContacts(model))
        (before.contains(contact->valueForKey("pKey").text()) ? old : fresh).push_back(Value(contact));
    if (fresh.empty() || old.empty())
        return;
    const auto added = static_cast<std::int64_t>(fresh.size());
    const std::int64_t repeats = model->perform("countOfRepeats:amongContacts:", {Value(std::move(fresh)), Value(std::move(old))}).integerValue();
    if (repeats > 0)
        showNotice(nullptr, QObject::tr("%1 of the %2 new contacts repeat one that was there.").arg(repeats).arg(added),
                   QObject::tr("Find Duplicates joins them."));
}

}  // namespace host

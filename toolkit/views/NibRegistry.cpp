#include "toolkit/views/NibRegistry.h"

#include <map>
#include <mutex>
#include <set>

#include "toolkit/services/NSLog.h"
#include "toolkit/views/NSTextField.h"

namespace {
std::mutex mutex;
std::map<NSString, NibRegistry::Builder> &builders() {
    static std::map<NSString, NibRegistry::Builder> table;
    return table;
}
}  // namespace

void NibRegistry::add(const NSString &name, Builder builder) {
    const std::scoped_lock lock(mutex);
    builders()[name] = std::move(builder);
}

void NibRegistry::remove(const NSString &name) {
    const std::scoped_lock lock(mutex);
    builders().erase(name);
}

bool NibRegistry::has(const NSString &name) {
    const std::scoped_lock lock(mutex);
    return builders().contains(name);
}

bool NibRegistry::build(Nib &nib) {
    assertMain("NibRegistry build");
    Builder builder;
    {
        const std::scoped_lock lock(mutex);
        const auto found = builders().find(nib.name());
        if (found != builders().end())
            builder = found->second;
    }
    if (builder)
        builder(nib);
    return builder != nullptr;
}

void NibRegistry::awaken(const Nib &nib, const id &owner) {
    const std::vector<id> objects = nib.objects();
    for (const id &object : objects)
        object->awakeFromNib();
    owner->awakeFromNib();
}

std::shared_ptr<NSView> NibRegistry::missingView(const NSString &name) {
    static std::set<NSString> logged;   // main thread only
    const NSString text = NSString::stringWithFormat("There is no view \"%@\" yet.", name);
    if (logged.insert(name).second)
        NSLog("%@", text);
    const auto view = make<NSView>(NSRect(0, 0, 480, 320));
    const auto label = NSTextField::labelWithString(text);
    label->setFrame({20, 280, 440, 17});
    label->setAutoresizingMask(NSViewWidthSizable | NSViewMinYMargin);
    view->addSubview(label);
    return view;
}

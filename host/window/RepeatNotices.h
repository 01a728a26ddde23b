// After an import of contacts: how many of the new ones repeat one that was there.
// Life      as long as its owner holds it. Threads: main.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>

#include "toolkit/NSObject.h"
#include "toolkit/views/ViewObserver.h"

namespace host {

class RepeatNotices : public ViewObserver, public std::enable_shared_from_this<RepeatNotices> {
public:
    // `model` gives the contacts' view model, null while another category is on show; `hasLoaded`, that its list stands.
    static std::shared_ptr<RepeatNotices> install(std::function<id()> model, std::function<bool()> hasLoaded);
    void remove();
    // A panel of contact files that ends with a file begins an import.
    void windowChanged(NSWindow &window, std::string_view key) override;
    // The list stands again: what it shows has changed with it.
    void propertyChanged(NSView &view, std::string_view key) override;

private:
    void tellIfLoaded();
    void tell(const id &model, const std::set<NSString> &before) const;
    std::function<id()> model_;
    std::function<bool()> hasLoaded_;
    struct Import {
        std::weak_ptr<NSObject> model;
        std::set<NSString> before;   // keys of the contacts
    };
    std::optional<Import> ended_;   // its list is being read anew
};

}  // namespace host

// Nibs are code: a name and a builder that makes and connects the objects of one view or window.
//
//     static const NibRegistry::Entry entry("HNMBooksViewController", [](Nib &nib) {
//         const auto owner = nib.owner<HNMbaseViewController>();
//         const auto view = nib.make<NSView>(NSRect(0, 0, 1000, 600));
//         nib.setView(view);
//         ...
//     });
//
// Run       at the first `view` or `window` of the owner, not before. What nib.make makes is owned by the controller, and
//           gets awakeFromNib in the order of making; the owner gets it last.
// Unknown   an unknown name gives an empty view (or a window with one) that says so in one line; logged once per name.
// Threads   registering: any, before main begins too; running: main.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "toolkit/views/NSWindow.h"

class Nib {
public:
    explicit Nib(NSString name, id owner) : name_(std::move(name)), owner_(std::move(owner)) {}

    [[nodiscard]] const NSString &name() const { return name_; }
    // Null where the owner is of another class: a nib that somebody else opens then wires what it can.
    template <class T> [[nodiscard]] std::shared_ptr<T> owner() const { return std::dynamic_pointer_cast<T>(owner_); }
    // ::make, noted for awakeFromNib and owned by the owner.
    template <class T, class... Arguments> std::shared_ptr<T> make(Arguments &&...arguments) {
        auto object = ::make<T>(std::forward<Arguments>(arguments)...);
        add(object);
        return object;
    }
    // The same for an object made elsewhere.
    void add(const id &object) { objects_.push_back(object); }
    void setView(std::shared_ptr<NSView> view) { view_ = std::move(view); }
    void setWindow(std::shared_ptr<NSWindow> window) { window_ = std::move(window); }

    [[nodiscard]] const std::shared_ptr<NSView> &view() const { return view_; }
    [[nodiscard]] const std::shared_ptr<NSWindow> &window() const { return window_; }
    [[nodiscard]] const std::vector<id> &objects() const { return objects_; }

private:
    NSString name_;
    id owner_;
    std::vector<id> objects_;
    std::shared_ptr<NSView> view_;
    std::shared_ptr<NSWindow> window_;
};

class NibRegistry {
public:
    using Builder = std::function<void(Nib &)>;
    // Registers by standing somewhere; the last builder of a name wins.
    struct Entry {
        Entry(const char *name, Builder builder) { add(name, std::move(builder)); }
    };
    static void add(const NSString &name, Builder builder);
    static void remove(const NSString &name);
    [[nodiscard]] static bool has(const NSString &name);
    // Runs the builder; the objects are not awake yet. False where the name is unknown.
    static bool build(Nib &nib);
    // awakeFromNib of all objects, then of the owner.
    static void awaken(const Nib &nib, const id &owner);
    // The view that stands for a nib that is not there.
    [[nodiscard]] static std::shared_ptr<NSView> missingView(const NSString &name);
};

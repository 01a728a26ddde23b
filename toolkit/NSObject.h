// The root of all objects that flows share: ownership, the table of keys and selectors, identity.
//
// Making   `make<T>(arguments...)`: construct, then `init(arguments...)`. `alloc<T>()` leaves the init to the caller
//          (a named one). Constructors only set fields.
// End      the last owner's release runs `dealloc()`, subclass first, then the destructor, both on the main thread;
//          a release on another thread hands the object over to the main queue. Records (classes with
//          kEndsOnAnyThread) end where they are dropped.
// Links    owners hold std::shared_ptr; links back and inside a triple are std::weak_ptr, used through `tell`.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

#include "toolkit/NSString.h"
#include "toolkit/Value.h"

class ClassTable;

class NSObject : public std::enable_shared_from_this<NSObject> {
public:
    static constexpr bool kEndsOnAnyThread = false;

    NSObject(const NSObject &) = delete;
    NSObject &operator=(const NSObject &) = delete;
    virtual ~NSObject() = default;

    virtual void init() {}
    // Once, after a nib made and connected all its objects; in the order of making.
    virtual void awakeFromNib() {}
    // Overrides do their own part first and call the base's last. shared_from_this() is no longer usable here.
    virtual void dealloc() {}

    // The class's own table; see ClassTable.
    [[nodiscard]] virtual const ClassTable &classTable() const;
    [[nodiscard]] NSString className() const;

    // An unknown key gives the absent value. A path is keys joined by dots; an absent step gives the absent value.
    [[nodiscard]] virtual Value valueForKey(std::string_view key);
    [[nodiscard]] Value valueForKeyPath(std::string_view path);
    // False where the class has no such key or the key cannot be set.
    virtual bool setValue_forKey(const Value &value, std::string_view key);
    // Selectors are written with their colons, "onDeleteButton:".
    [[nodiscard]] virtual bool respondsToSelector(std::string_view selector) const;
    // An unknown selector does nothing and gives the absent value; missing arguments are absent.
    virtual Value perform(std::string_view selector, const std::vector<Value> &arguments = {});

    // Equality by value where a class defines one; else identity.
    [[nodiscard]] virtual bool isEqual(const NSObject *other) const { return this == other; }
    [[nodiscard]] virtual NSString description() const;

    template <class T> [[nodiscard]] bool isKindOf() const { return dynamic_cast<const T *>(this) != nullptr; }
    // Exact class; a subclass does not count.
    template <class T> [[nodiscard]] bool isMemberOf() const { return typeid(*this) == typeid(T); }

protected:
    NSObject() = default;
    // This object as its own class, for blocks that keep it.
    template <class T> [[nodiscard]] static std::shared_ptr<T> selfOf(T *object) {
        return std::static_pointer_cast<T>(object->shared_from_this());
    }
    template <class T> [[nodiscard]] static std::weak_ptr<T> weakOf(T *object) {
        return std::static_pointer_cast<T>(object->weak_from_this().lock());
    }
};

// A class's keys and selectors. One per class, made on first use:
//
//     const ClassTable &HNMNoteViewManager::classTable() const {
//         static const ClassTable table = ClassTable("HNMNoteViewManager", &HNTableViewManager::sharedTable())
//             .key("pageCount", &HNMNoteViewManager::pageCount)
//             .selector("onAddButton:", &HNMNoteViewManager::onAddButton);
//         return table;
//     }
//
// The macro HN_CLASS_TABLE writes the frame. What is not in the class's own table is looked for in its base's.
class ClassTable {
public:
    using Getter = std::function<Value(NSObject &)>;
    using Setter = std::function<void(NSObject &, const Value &)>;
    using Method = std::function<Value(NSObject &, const std::vector<Value> &)>;

    ClassTable(std::string name, const ClassTable *base) : name_(std::move(name)), base_(base) {}

    [[nodiscard]] const std::string &name() const { return name_; }
    [[nodiscard]] const ClassTable *base() const { return base_; }

    ClassTable &&key(std::string name, Getter getter, Setter setter = {}) &&;
    // A field: a plain one, a Property (has get() and set()), or a const operation without arguments.
    template <class T, class Member> ClassTable &&key(std::string name, Member T::*member) &&;
    ClassTable &&selector(std::string name, Method method) &&;
    template <class T, class Result, class... Parameters>
    ClassTable &&selector(std::string name, Result (T::*method)(Parameters...)) &&;

    [[nodiscard]] const Getter *getter(std::string_view key) const;
    [[nodiscard]] const Setter *setter(std::string_view key) const;
    [[nodiscard]] const Method *method(std::string_view selector) const;
    // Own and inherited ones, for hosts that show what an object has.
    [[nodiscard]] std::vector<std::string> keys() const;
    [[nodiscard]] std::vector<std::string> selectors() const;

private:
    struct Key {
        Getter getter;
        Setter setter;
    };
    std::string name_;
    const ClassTable *base_;
    std::map<std::string, Key, std::less<>> keys_;
    std::map<std::string, Method, std::less<>> methods_;
};

// Declares the table in a class (public), to be defined with HN_CLASS_TABLE in its source.
#define HN_DECLARE_CLASS_TABLE                           \
    [[nodiscard]] static const ClassTable &sharedTable(); \
    [[nodiscard]] const ClassTable &classTable() const override { return sharedTable(); }

// HN_CLASS_TABLE(HNMNoteViewManager, HNTableViewManager, .key(...) .selector(...))
#define HN_CLASS_TABLE(Class, Base, ...)                                                            \
    const ClassTable &Class::sharedTable() {                                                        \
        static const ClassTable table = ClassTable(#Class, &Base::sharedTable()) __VA_ARGS__;       \
        return table;                                                                               \
    }

// The base of classes that sit directly below NSObject.
class NSObjectTable {
public:
    [[nodiscard]] static const ClassTable &sharedTable();
};

// ---------------------------------------------------------------- making and ending

namespace objects {
// Ends an object on the main thread.
struct Ender {
    void operator()(NSObject *object) const noexcept;
};
}  // namespace objects

template <class T, class... Arguments> [[nodiscard]] std::shared_ptr<T> alloc(Arguments &&...arguments) {
    if constexpr (T::kEndsOnAnyThread)
        return std::make_shared<T>(std::forward<Arguments>(arguments)...);
    else
        return std::shared_ptr<T>(new T(std::forward<Arguments>(arguments)...), objects::Ender{});
}

template <class T, class... Arguments> std::shared_ptr<T> make(Arguments &&...arguments) {
    std::shared_ptr<T> object = alloc<T>();
    object->init(std::forward<Arguments>(arguments)...);
    return object;
}

// Calls `block` with the object while it lives, keeping it for the length of the call; nothing where it has gone.
template <class T, class Block> void tell(const std::weak_ptr<T> &link, Block &&block) {
    if (const std::shared_ptr<T> object = link.lock())
        std::forward<Block>(block)(*object);
}

// ---------------------------------------------------------------- templates

namespace objects {

template <class T, class = void> struct IsProperty : std::false_type {};
template <class T>
struct IsProperty<T, std::void_t<decltype(std::declval<T &>().set(std::declval<T &>().get()))>> : std::true_type {};

template <class T> Value toValue(const T &held) {
    if constexpr (std::is_constructible_v<Value, T>)
        return Value(held);
    else
        return Value(held.lock());   // a weak link
}

template <class T> void assign(T &field, const Value &value) {
    if constexpr (std::is_constructible_v<Value, T>)
        field = fromValue<T>(value);
    else
        field = fromValue<std::shared_ptr<typename T::element_type>>(value);
}

template <class T, class Result, class... Parameters, std::size_t... Index>
Value invoke(T &object, Result (T::*method)(Parameters...), const std::vector<Value> &arguments, std::index_sequence<Index...>) {
    static const Value absent;
    const auto at = [&](std::size_t i) -> const Value & { return i < arguments.size() ? arguments[i] : absent; };
    (void)at;
    if constexpr (std::is_void_v<Result>) {
        (object.*method)(fromValue<std::decay_t<Parameters>>(at(Index))...);
        return {};
    } else {
        return toValue((object.*method)(fromValue<std::decay_t<Parameters>>(at(Index))...));
    }
}

}  // namespace objects

template <class T, class Member> ClassTable &&ClassTable::key(std::string name, Member T::*member) && {
    if constexpr (std::is_member_function_pointer_v<Member T::*>) {
        return std::move(*this).key(std::move(name), [member](NSObject &o) { return objects::toValue((static_cast<T &>(o).*member)()); });
    } else if constexpr (objects::IsProperty<Member>::value) {
        return std::move(*this).key(
            std::move(name), [member](NSObject &o) { return objects::toValue((static_cast<T &>(o).*member).get()); },
            [member](NSObject &o, const Value &v) {
                auto &property = static_cast<T &>(o).*member;
                property.set(fromValue<std::decay_t<decltype(property.get())>>(v));
            });
    } else {
        return std::move(*this).key(
            std::move(name), [member](NSObject &o) { return objects::toValue(static_cast<T &>(o).*member); },
            [member](NSObject &o, const Value &v) { objects::assign(static_cast<T &>(o).*member, v); });
    }
}

template <class T, class Result, class... Parameters>
ClassTable &&ClassTable::selector(std::string name, Result (T::*method)(Parameters...)) && {
    return std::move(*this).selector(std::move(name), Method([method](NSObject &o, const std::vector<Value> &arguments) {
                                         return objects::invoke(static_cast<T &>(o), method, arguments, std::index_sequence_for<Parameters...>{});
                                     }));
}

// A value as keys, selectors and bindings pass it: absent, a flag, a number, a text, an object or a list.
#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "toolkit/NSString.h"

class NSObject;
using id = std::shared_ptr<NSObject>;

class Value {
public:
    using List = std::vector<Value>;

    Value() = default;
    Value(std::nullptr_t) {}
    Value(bool flag) : held_(flag) {}
    template <class T>
        requires(std::is_integral_v<T> && !std::is_same_v<T, bool>)
    Value(T number) : held_(static_cast<std::int64_t>(number)) {}
    template <class T>
        requires std::is_enum_v<T>
    Value(T number) : held_(static_cast<std::int64_t>(number)) {}
    template <class T>
        requires std::is_floating_point_v<T>
    Value(T number) : held_(static_cast<double>(number)) {}
    Value(const char *text) : Value(NSString(text)) {}
    Value(NSString text) {
        if (!text.isNil())
            held_ = std::move(text);
    }
    template <class T>
        requires std::is_convertible_v<std::shared_ptr<T>, id>
    Value(std::shared_ptr<T> object) {
        if (object)
            held_ = id(std::move(object));
    }
    Value(List list) : held_(std::make_shared<const List>(std::move(list))) {}

    [[nodiscard]] bool isAbsent() const { return std::holds_alternative<std::monostate>(held_); }
    [[nodiscard]] bool isText() const { return std::holds_alternative<NSString>(held_); }
    [[nodiscard]] bool isNumber() const { return isInteger() || std::holds_alternative<double>(held_) || isFlag(); }
    [[nodiscard]] bool isInteger() const { return std::holds_alternative<std::int64_t>(held_); }
    [[nodiscard]] bool isFlag() const { return std::holds_alternative<bool>(held_); }
    [[nodiscard]] bool isObject() const { return std::holds_alternative<id>(held_); }
    [[nodiscard]] bool isList() const { return std::holds_alternative<std::shared_ptr<const List>>(held_); }

    // Each gives the empty answer of its kind (false, 0, absent, null, no elements) where the value is of another kind.
    [[nodiscard]] bool boolValue() const;
    [[nodiscard]] std::int64_t integerValue() const;
    [[nodiscard]] double doubleValue() const;
    [[nodiscard]] NSString text() const;
    [[nodiscard]] id object() const;
    [[nodiscard]] const List &list() const;

    // As a person reads it; an absent value gives an absent text.
    [[nodiscard]] NSString description() const;
    // Absent first, then numbers by size, then texts by code points, then the rest as equal.
    [[nodiscard]] std::weak_ordering compare(const Value &other) const;
    bool operator==(const Value &other) const;

private:
    std::variant<std::monostate, bool, std::int64_t, double, NSString, id, std::shared_ptr<const List>> held_;
};

// From a value to the type that an operation or a field wants.
template <class T> T fromValue(const Value &value) {
    if constexpr (std::is_same_v<T, Value>)
        return value;
    else if constexpr (std::is_same_v<T, bool>)
        return value.boolValue();
    else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>)
        return static_cast<T>(value.integerValue());
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(value.doubleValue());
    else if constexpr (std::is_same_v<T, NSString>)
        return value.text();
    else if constexpr (std::is_constructible_v<T, id>)
        return T(value.object());
    else
        return std::dynamic_pointer_cast<typename T::element_type>(value.object());
}

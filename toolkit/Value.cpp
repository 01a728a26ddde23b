#include "toolkit/Value.h"

#include <cmath>

#include "toolkit/NSObject.h"

bool Value::boolValue() const {
    if (const auto *flag = std::get_if<bool>(&held_))
        return *flag;
    if (const auto *number = std::get_if<std::int64_t>(&held_))
        return *number != 0;
    if (const auto *number = std::get_if<double>(&held_))
        return *number != 0;
    return false;
}

std::int64_t Value::integerValue() const {
    if (const auto *number = std::get_if<std::int64_t>(&held_))
        return *number;
    if (const auto *number = std::get_if<double>(&held_))
        return std::isfinite(*number) && std::abs(*number) < 9.2e18 ? static_cast<std::int64_t>(*number) : 0;
    if (const auto *text = std::get_if<NSString>(&held_))
        return text->integerValue();
    return boolValue() ? 1 : 0;
}

double Value::doubleValue() const {
    if (const auto *number = std::get_if<double>(&held_))
        return *number;
    if (const auto *text = std::get_if<NSString>(&held_))
        return text->doubleValue();
    return static_cast<double>(integerValue());
}

NSString Value::text() const {
    const auto *text = std::get_if<NSString>(&held_);
    return text ? *text : NSString();
}

id Value::object() const {
    const auto *object = std::get_if<id>(&held_);
    return object ? *object : nullptr;
}

const Value::List &Value::list() const {
    static const List none;
    const auto *list = std::get_if<std::shared_ptr<const List>>(&held_);
    return list ? **list : none;
}

NSString Value::description() const {
    if (isText())
        return text();
    if (isObject())
        return object()->description();
    if (isFlag())
        return boolValue() ? "1" : "0";
    if (isInteger())
        return NSString(std::to_string(integerValue()));
    if (isNumber())
        return NSString::stringWithFormat("%@", doubleValue());
    if (isList()) {
        std::vector<NSString> texts;
        for (const Value &element : list())
            texts.push_back(element.description());
        return descriptionOfList(texts);
    }
    return {};
}

std::weak_ordering Value::compare(const Value &other) const {
    const auto rank = [](const Value &v) { return v.isAbsent() ? 0 : v.isNumber() ? 1 : v.isText() ? 2 : 3; };
    if (rank(*this) != rank(other))
        return rank(*this) <=> rank(other);
    switch (rank(*this)) {
    case 1: {
        if (isInteger() && other.isInteger())
            return integerValue() <=> other.integerValue();
        const double left = doubleValue(), right = other.doubleValue();
        return left < right ? std::weak_ordering::less : right < left ? std::weak_ordering::greater : std::weak_ordering::equivalent;
    }
    case 2: return std::get<NSString>(held_) <=> std::get<NSString>(other.held_);
    default: return std::weak_ordering::equivalent;
    }
}

bool Value::operator==(const Value &other) const {
    if (isNumber() && other.isNumber())
        return compare(other) == 0;
    if (isList() && other.isList())
        return list() == other.list();
    return held_ == other.held_;
}

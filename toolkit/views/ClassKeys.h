// Short ways to write the keys of a class table whose values stand behind a getter and a setter.
//
//     HN_CLASS_TABLE(NSButton, NSControl, .key("title", keys::get(&NSButton::title), keys::set(&NSButton::setTitle)))
#pragma once

#include <type_traits>

#include "toolkit/NSObject.h"

namespace keys {

template <class T, class Result> ClassTable::Getter get(Result (T::*getter)() const) {
    return [getter](NSObject &o) { return objects::toValue<std::decay_t<Result>>((static_cast<T &>(o).*getter)()); };
}
template <class T, class Result, class Parameter> ClassTable::Setter set(Result (T::*setter)(Parameter)) {
    return [setter](NSObject &o, const Value &v) { (static_cast<T &>(o).*setter)(fromValue<std::decay_t<Parameter>>(v)); };
}

}  // namespace keys

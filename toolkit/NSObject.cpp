#include "toolkit/NSObject.h"

#include <algorithm>

#include "toolkit/dispatch/Guard.h"
#include "toolkit/dispatch/Runtime.h"

// ---------------------------------------------------------------- NSObject

const ClassTable &NSObjectTable::sharedTable() {
    static const ClassTable table("NSObject", nullptr);
    return table;
}

const ClassTable &NSObject::classTable() const { return NSObjectTable::sharedTable(); }

namespace {

// The last name of a mangled one (Itanium C++ ABI): "11NSTextField", "N6device7SessionE".
std::string_view unmangled(std::string_view mangled) {
    std::string_view name = mangled;
    std::size_t at = mangled.starts_with("N") ? 1 : 0;
    while (at < mangled.size() && mangled[at] >= '0' && mangled[at] <= '9') {
        std::size_t length = 0;
        for (; at < mangled.size() && mangled[at] >= '0' && mangled[at] <= '9'; ++at)
            length = length * 10 + static_cast<std::size_t>(mangled[at] - '0');
        name = mangled.substr(std::min(at, mangled.size()), length);
        at += length;
    }
    return name;
}

}  // namespace

NSString NSObject::className() const { return NSString(unmangled(typeid(*this).name())); }

Value NSObject::valueForKey(std::string_view key) {
    const ClassTable::Getter *getter = classTable().getter(key);
    return getter ? (*getter)(*this) : Value();
}

Value NSObject::valueForKeyPath(std::string_view path) {
    const std::size_t dot = path.find('.');
    if (dot == std::string_view::npos)
        return valueForKey(path);
    const id step = valueForKey(path.substr(0, dot)).object();
    return step ? step->valueForKeyPath(path.substr(dot + 1)) : Value();
}

bool NSObject::setValue_forKey(const Value &value, std::string_view key) {
    const ClassTable::Setter *setter = classTable().setter(key);
    if (!setter)
        return false;
    (*setter)(*this, value);
    return true;
}

bool NSObject::respondsToSelector(std::string_view selector) const { return classTable().method(selector) != nullptr; }

Value NSObject::perform(std::string_view selector, const std::vector<Value> &arguments) {
    const ClassTable::Method *method = classTable().method(selector);
    if (!method)
        return {};
    const auto keep = weak_from_this().lock();   // the receiver lives for the length of the call
    return (*method)(*this, arguments);
}

NSString NSObject::description() const { return NSString("<" + className().str() + ">"); }

// ---------------------------------------------------------------- ClassTable

ClassTable &&ClassTable::key(std::string name, Getter getter, Setter setter) && {
    keys_[std::move(name)] = {std::move(getter), std::move(setter)};
    return std::move(*this);
}

ClassTable &&ClassTable::selector(std::string name, Method method) && {
    methods_[std::move(name)] = std::move(method);
    return std::move(*this);
}

const ClassTable::Getter *ClassTable::getter(std::string_view key) const {
    for (const ClassTable *table = this; table; table = table->base_)
        if (const auto found = table->keys_.find(key); found != table->keys_.end())
            return &found->second.getter;
    return nullptr;
}

const ClassTable::Setter *ClassTable::setter(std::string_view key) const {
    for (const ClassTable *table = this; table; table = table->base_)
        if (const auto found = table->keys_.find(key); found != table->keys_.end())
            return found->second.setter ? &found->second.setter : nullptr;
    return nullptr;
}

const ClassTable::Method *ClassTable::method(std::string_view selector) const {
    for (const ClassTable *table = this; table; table = table->base_)
        if (const auto found = table->methods_.find(selector); found != table->methods_.end())
            return &found->second;
    return nullptr;
}

std::vector<std::string> ClassTable::keys() const {
    std::vector<std::string> names;
    for (const ClassTable *table = this; table; table = table->base_)
        for (const auto &[name, key] : table->keys_)
            names.push_back(name);
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::vector<std::string> ClassTable::selectors() const {
    std::vector<std::string> names;
    for (const ClassTable *table = this; table; table = table->base_)
        for (const auto &[name, method] : table->methods_)
            names.push_back(name);
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

// ---------------------------------------------------------------- ending

namespace objects {

namespace {

void endHere(NSObject *object) noexcept {
    dispatch::guarded("dealloc", [object] { object->dealloc(); });
    delete object;
}

// Owns an object on its way to the main queue; a queue that drops its blocks ends it all the same.
struct OnItsWay {
    NSObject *object;
    explicit OnItsWay(NSObject *o) : object(o) {}
    OnItsWay(OnItsWay &&other) noexcept : object(std::exchange(other.object, nullptr)) {}
    ~OnItsWay() {
        if (object)
            endHere(object);
    }
    void operator()() {
        if (NSObject *mine = std::exchange(object, nullptr))
            endHere(mine);
    }
};

}  // namespace

void Ender::operator()(NSObject *object) const noexcept {
    if (!object)
        return;
    if (dispatch::isMain())
        endHere(object);
    else
        dispatch::async(dispatch::main(), OnItsWay(object));
}

}  // namespace objects

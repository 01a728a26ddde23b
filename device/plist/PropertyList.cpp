#include "device/plist/PropertyList.h"

#include <plist/plist.h>

#include <cstdlib>

#include "device/AccessError.h"
#include "device/File.h"
#include "device/plist/Depth.h"

namespace device {

namespace {

constexpr std::int64_t kAppleEpoch = 978307200;   // the library counts dates from 2001

plist_t item(const std::shared_ptr<void> &node, const char *key, plist_type type) {
    plist_t found = plist_dict_get_item(node.get(), key);
    return found && plist_get_node_type(found) == type ? found : nullptr;
}

std::string textOf(plist_t node) {
    char *raw = nullptr;
    plist_get_string_val(node, &raw);
    std::string text = raw ? raw : "";
    std::free(raw);
    return text;
}

std::shared_ptr<void> owned(plist_t node) { return {node, [](void *held) { plist_free(held); }}; }

}  // namespace

PropertyList::PropertyList() : node_(owned(plist_new_dict())) {}
PropertyList::PropertyList(void *node) : node_(owned(node)) {}

PropertyList PropertyList::read(const std::filesystem::path &path) { return parse(readWhole(path, kMaxBytes), path.string()); }

PropertyList PropertyList::parse(std::string_view bytes, const std::string &file) {
    const auto damaged = [&file](const char *why) { return AccessError(AccessError::Kind::damaged, file, why); };
    if (bytes.size() > kMaxBytes)
        throw damaged("too large for a property list");
    // The library walks and frees nested nodes by recursion, so a deep list would end the process.
    if (!plist::isShallow(bytes, kMaxDepth))
        throw damaged("not a property list, or nested too deep");
    plist_t node = nullptr;
    if (plist::isBinary(bytes))
        plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    else
        plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    if (!node)
        throw damaged("not a property list");
    PropertyList list(node);
    if (plist_get_node_type(node) != PLIST_DICT)
        throw damaged("a property list without a dictionary");
    return list;
}

bool PropertyList::has(const char *key) const { return plist_dict_get_item(node_.get(), key) != nullptr; }

std::optional<std::string> PropertyList::text(const char *key) const {
    plist_t found = item(node_, key, PLIST_STRING);
    return found ? std::optional(textOf(found)) : std::nullopt;
}

std::optional<std::int64_t> PropertyList::integer(const char *key) const {
    plist_t found = item(node_, key, PLIST_UINT);
    if (!found)
        return std::nullopt;
    std::uint64_t value = 0;
    plist_get_uint_val(found, &value);
    return static_cast<std::int64_t>(value);
}

std::optional<bool> PropertyList::flag(const char *key) const {
    plist_t found = item(node_, key, PLIST_BOOLEAN);
    if (!found)
        return std::nullopt;
    std::uint8_t value = 0;
    plist_get_bool_val(found, &value);
    return value != 0;
}

std::optional<std::string> PropertyList::data(const char *key) const {
    plist_t found = item(node_, key, PLIST_DATA);
    if (!found)
        return std::nullopt;
    char *raw = nullptr;
    std::uint64_t size = 0;
    plist_get_data_val(found, &raw, &size);
    std::string bytes(raw ? raw : "", raw ? size : 0);
    std::free(raw);
    return bytes;
}

std::vector<std::string> PropertyList::texts(const char *key) const {
    std::vector<std::string> values;
    plist_t found = item(node_, key, PLIST_ARRAY);
    if (!found)
        return values;
    for (std::uint32_t i = 0; i < plist_array_get_size(found); ++i) {
        plist_t element = plist_array_get_item(found, i);
        if (plist_get_node_type(element) == PLIST_STRING)
            values.push_back(textOf(element));
    }
    return values;
}

std::optional<PropertyList> PropertyList::dictionary(const char *key) const {
    plist_t found = item(node_, key, PLIST_DICT);
    return found ? std::optional(PropertyList(plist_copy(found))) : std::nullopt;
}

void PropertyList::setText(const char *key, const std::string &value) {
    plist_dict_set_item(node_.get(), key, plist_new_string(value.c_str()));
}

void PropertyList::setInteger(const char *key, std::int64_t value) {
    plist_dict_set_item(node_.get(), key, plist_new_uint(static_cast<std::uint64_t>(value)));
}

void PropertyList::setFlag(const char *key, bool value) { plist_dict_set_item(node_.get(), key, plist_new_bool(value)); }

void PropertyList::setData(const char *key, std::string_view value) {
    plist_dict_set_item(node_.get(), key, plist_new_data(value.data() ? value.data() : "", value.size()));
}

void PropertyList::setDate(const char *key, std::int64_t seconds) {
    plist_dict_set_item(node_.get(), key, plist_new_date(static_cast<std::int32_t>(seconds - kAppleEpoch), 0));
}

void PropertyList::setTexts(const char *key, const std::vector<std::string> &values) {
    plist_t array = plist_new_array();
    for (const std::string &value : values)
        plist_array_append_item(array, plist_new_string(value.c_str()));
    plist_dict_set_item(node_.get(), key, array);
}

void PropertyList::setDictionary(const char *key, const PropertyList &value) {
    plist_dict_set_item(node_.get(), key, plist_copy(value.node_.get()));
}

void PropertyList::remove(const char *key) {
    if (plist_dict_get_item(node_.get(), key))
        plist_dict_remove_item(node_.get(), key);
}

std::string PropertyList::bytes(Format format) const {
    char *raw = nullptr;
    std::uint32_t size = 0;
    if (format == Format::binary)
        plist_to_bin(node_.get(), &raw, &size);
    else
        plist_to_xml(node_.get(), &raw, &size);
    std::string bytes(raw ? raw : "", raw ? size : 0);
    if (format == Format::binary)
        plist_to_bin_free(raw);
    else
        plist_to_xml_free(raw);
    return bytes;
}

}  // namespace device

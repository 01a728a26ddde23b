// Property lists in their XML form: dictionaries, arrays, texts, integers, reals, flags, dates (as texts), data (base64
// text). Binary ones are the device layer's.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/NSObject.h"

// Keys in the order of the file; `valueForKey` finds by key.
class NSDictionary : public NSObject {
public:
    static constexpr bool kEndsOnAnyThread = true;
    std::vector<std::pair<NSString, Value>> entries;
    [[nodiscard]] Value valueForKey(std::string_view key) override;
};

// Absent where the bytes are no XML property list. At most 64 levels deep.
[[nodiscard]] Value propertyListFromXML(std::string_view bytes);
[[nodiscard]] Value propertyListWithContentsOfFile(const NSString &path);

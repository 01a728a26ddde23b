// What a layer calls back, as one text: "0/2 1/2 " of a move, "0/2+ 1/2- " of a delete.
#pragma once

#include <string>
#include <vector>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/CBookmarkManagerImpl.h"

inline std::string callsOfMove(CBookmarkManagerImpl &layer, const NSString &target, const std::vector<NSString> &keys) {
    std::string calls;
    layer.moveBookMark_childrenKey_callBack(target, keys, [&](std::int64_t index, std::int64_t, std::int64_t total, std::int64_t, bool *) {
        calls += std::to_string(index) + "/" + std::to_string(total) + " ";
    });
    return calls;
}

inline std::string callsOfDelete(CBookmarkManagerImpl &layer, const std::vector<NSString> &keys, int stopAt = -1) {
    CBookmarkManagerImpl::Keys dictionary;
    for (const NSString &key : keys)
        dictionary[key] = key;
    std::string calls;
    layer.deleteBookMarkFromPkeys_callBack(dictionary, [&](std::int64_t index, std::int64_t total, bool success, bool *stop) {
        calls += std::to_string(index) + "/" + std::to_string(total) + (success ? "+ " : "- ");
        *stop = index == stopAt;
    });
    return calls;
}

// The card reader once more, slow and plain: whole lists of pieces, one rule after the other. The real reader must give
// the same on any text.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

struct PlainFailure : std::runtime_error {
    explicit PlainFailure(std::int64_t at) : std::runtime_error("fatal"), line(at) {}
    std::int64_t line;
};

[[nodiscard]] ContactList readPlainly(const NSString &text);

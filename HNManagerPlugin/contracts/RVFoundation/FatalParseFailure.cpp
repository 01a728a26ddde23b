#include "HNManagerPlugin/contracts/RVFoundation/FatalParseFailure.h"

FatalParseFailure::FatalParseFailure(NSString file, std::optional<std::int64_t> line, NSString reason)
    : std::runtime_error(file.str() + (line ? ":" + std::to_string(*line) : std::string()) + ": " + reason.str()),
      file_(std::move(file)), line_(line), reason_(std::move(reason)) {}

FatalParseFailure::~FatalParseFailure() = default;

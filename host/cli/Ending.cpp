#include "host/cli/Ending.h"

namespace host::cli {

CommandError::~CommandError() = default;

Status statusOf(device::AccessError::Kind kind) {
    using Kind = device::AccessError::Kind;
    return kind == Kind::locked || kind == Kind::gone || kind == Kind::damaged ? kNotOpened : kFailed;
}

}  // namespace host::cli

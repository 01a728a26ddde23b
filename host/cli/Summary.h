// What the program shows without a command: the device, its categories, its contacts.
#pragma once

#include "host/cli/Commands.h"

namespace host::cli {

Status showSummary(Context &context);

}  // namespace host::cli

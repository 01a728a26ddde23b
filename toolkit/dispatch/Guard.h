// The one guard round every event, action, block, timer and worker body: what escapes from it is logged and told to the
// host, and never unwinds through a modal loop.
#pragma once

#include <exception>
#include <functional>

#include "toolkit/dispatch/Block.h"

namespace dispatch {

// Told on the thread on which the exception escaped. `what` says where ("action onImportButton:").
using FailureSink = std::function<void(const char *what, std::exception_ptr failure)>;

// Replaces the sink; an empty one writes to standard error. Call it before work starts.
void setFailureSink(FailureSink sink);
[[nodiscard]] FailureSink failureSink();

// True when the body came to its end.
bool guarded(const char *what, const std::function<void()> &body);
void tellFailure(const char *what, std::exception_ptr failure);
// English text of an exception, for logs and people.
[[nodiscard]] const char *reasonOf(const std::exception_ptr &failure);

}  // namespace dispatch

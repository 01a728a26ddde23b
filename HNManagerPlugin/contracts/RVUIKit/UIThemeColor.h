// The product's theme colour: links, check marks, selected rows, progress bars. Any thread.
#pragma once

#include "toolkit/NSColor.h"

[[nodiscard]] std::shared_ptr<NSColor> UIThemeColor();

// The command line's side of files that other programs wrote. Threads: main.
#pragma once

#include <memory>

#include "host/cli/ContactCategory.h"
#include "host/cli/ImportFile.h"
#include "host/import/Handover.h"

namespace host::cli {

// Null where the plug-in's readers take the file as it is; what was changed is told on standard error. The private file is
// gone with the result. Throws FatalParseFailure where the file is broken, CommandError where it cannot be read or no private
// file can be written.
[[nodiscard]] std::unique_ptr<foreign::Handover> rewrittenFile(Context &context, const ImportFile &file);

// Tells how many of the contacts that are new on the device repeat one of `before`; nothing where none does.
void tellRepeats(Context &context, const ContactCategory &category, const ContactList &before);

}  // namespace host::cli

// Files of contacts on their way from a person's choice to the plug-in: what another program wrote goes over rewritten.
//
// Told      what was guessed, changed or left behind, and why a file is refused, in a notice of the program.
// Kept      the rewritten file until the flow has read it; the folder that the panel remembers stays the person's own.
// Threads   main.
#pragma once

#include <vector>

#include "toolkit/NSString.h"

class NSSavePanel;
class QWidget;

namespace host {

// An open panel that asks for files of contacts.
[[nodiscard]] bool takesContacts(const NSSavePanel &panel);

// What the panel is to get instead of these files; empty where one of them is broken. The same files for a panel that takes no
// files of contacts, or while the program has no folder of its own for rewritten ones.
[[nodiscard]] std::vector<NSString> handedOver(const NSSavePanel &panel, const std::vector<NSString> &files, QWidget *owner);

// A kind that the panel takes once it is rewritten, though it does not ask for it; absent for none.
[[nodiscard]] NSString extraFileType(const NSSavePanel &panel);

}  // namespace host

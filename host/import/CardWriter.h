// A contact as the card that the plug-in's reader takes whole.
//
// Form     lines end at LF, so that telephone numbers come in without a CR; label lines end at CR LF, since the reader takes
//          one character more off a label than it has marks. Everything with a label that the reader takes is an item.
// Hidden   where a text would end a field or begin another one, a CR is put between two of its characters, which the reader
//          takes out again. Where it does not, ":" and ";" become their full-width forms; that is told.
// Cost     one pass. Threads: any.
#pragma once

#include <string>

#include "host/import/ForeignContact.h"

namespace host::foreign {

// Appends the card; adds to `contact.notCarried` what the dialect changes.
void appendCard(std::string &to, ForeignContact &contact);

}  // namespace host::foreign

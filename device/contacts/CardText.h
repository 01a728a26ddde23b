// A contact as one card (vCard 3.0, RFC 2426): lines that other programs take and that our own card reader takes back.
//
// Shape    one property a line, never folded, CRLF. URLs, related names and dates stand as items with a label line where
//          only that keeps their label; addresses always do.
// Escapes  in NOTE alone, where the reader undoes them: backslash and line break. Elsewhere a line break becomes a blank.
// Marks    where a plain character would end a part for the reader (";" and ":" in names, addresses, labels, numbers), and
//          in words that it looks for in the whole line, the full-width form of that character stands instead; in the words
//          that end a card wherever they stand, that of the V.
// Left out texts that are absent or empty, list items without a value.
// Threads  any; a picture that is read from the device only now is read on the calling thread.
#pragma once

#include <string>

#include "HNManagerPlugin/contracts/RVDeviceCoreManager/ZpContactDataInfo.h"

namespace device::contacts {

void appendCard(std::string &to, const ZpContactDataInfo &contact);

}  // namespace device::contacts

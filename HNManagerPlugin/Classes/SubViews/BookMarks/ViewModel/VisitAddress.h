// What a bookmark's address opens as in the browser.
//
// Rule     an address of the forms http://, https:// or ftp:// host, or www. host, opens as it stands; any other, whatever
//          scheme it has (javascript:, file:), gets "http://" in front. A host ends in a dot and two to four letters; a port
//          of digits and a path may follow. Letters of the scheme are lower case.
// Threads  any.
#pragma once

#include "toolkit/NSString.h"

namespace bookmarks {

// True for an address that opens as it stands: the pattern
//     ((http[s]{0,1}|ftp)://HOST)|(www.HOST)   with   HOST = [a-zA-Z0-9.-]+ \. [a-zA-Z]{2,4} (:\d+)? (/PATH*)?
// matches it from end to end. The dot behind "www" stands for any character.
[[nodiscard]] bool isWholeAddress(const NSString &address);
// An absent address counts as empty.
[[nodiscard]] NSString addressToOpen(const NSString &address);

}   // namespace bookmarks

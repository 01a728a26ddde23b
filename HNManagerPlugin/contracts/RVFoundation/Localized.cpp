#include "HNManagerPlugin/contracts/RVFoundation/Localized.h"

#include "toolkit/services/NSBundle.h"

NSString localized(const NSString &key) { return NSBundle::mainBundle()->localizedStringForKey_value_table(key, "", "localization"); }

NSString localizedAddress(const NSString &key) { return NSBundle::mainBundle()->localizedStringForKey_value_table(key, "", "InfoPlist"); }

// "Arablic": kept, the language tables of all products spell it so.
bool isRightToLeftLanguage() { return localized("Current_Language") == "Arablic"; }

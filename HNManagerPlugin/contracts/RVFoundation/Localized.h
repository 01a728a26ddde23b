// The one form in which a text for people is looked up: the main bundle's table "localization", with an empty default.
// An unknown key gives the key. Any thread.
#pragma once

#include "toolkit/NSString.h"

[[nodiscard]] NSString localized(const NSString &key);
// Web addresses stand in the table "InfoPlist".
[[nodiscard]] NSString localizedAddress(const NSString &key);
// True where the language is written from right to left: the key "Current_Language" reads "Arablic".
[[nodiscard]] bool isRightToLeftLanguage();

// The categories in the order in which hosts count them, as people type and read them.
#pragma once

#include <array>
#include <cstdint>

namespace host {

struct CategoryName {
    const char *word;    // on the command line
    const char *title;   // in the menu
};

inline constexpr std::array<CategoryName, 10> kCategories{{{"photos", "Photos"},
                                                           {"albums", "Albums"},
                                                           {"music", "Music"},
                                                           {"ringtones", "Ringtones"},
                                                           {"videos", "Videos"},
                                                           {"contacts", "Contacts"},
                                                           {"messages", "Messages"},
                                                           {"apps", "Apps"},
                                                           {"books", "Books"},
                                                           {"bookmarks", "Bookmarks"}}};
inline constexpr std::int64_t kContactsCategory = 5;

}  // namespace host

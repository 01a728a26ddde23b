# Libraries from outside. Only floors 4 and 5 link them.

find_package(PkgConfig REQUIRED)
pkg_check_modules(SQLITE IMPORTED_TARGET sqlite3)
pkg_check_modules(PLIST IMPORTED_TARGET libplist-2.0)
pkg_check_modules(CRYPTO IMPORTED_TARGET libcrypto)
pkg_check_modules(HEIF IMPORTED_TARGET libheif)
pkg_check_modules(JPEG IMPORTED_TARGET libjpeg)

find_package(CLI11 QUIET)
find_package(nlohmann_json QUIET)
if(NOT HN_FUZZ)
    find_package(Qt6 QUIET COMPONENTS Widgets DBus OPTIONAL_COMPONENTS Test)
endif()

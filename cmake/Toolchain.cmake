# Flags that every target shares, the compile cache, and where the results go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# Programs find the plug-in, the shared libraries and Resources/ beside themselves.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# The same for libraries and programs, so that they share precompiled headers.
add_compile_options(-fPIC)

add_compile_options(-Wall -Wextra)
if(HN_WERROR)
    add_compile_options(-Werror)
    string(APPEND CMAKE_SHARED_LINKER_FLAGS " -Wl,--no-undefined")
    string(APPEND CMAKE_MODULE_LINKER_FLAGS " -Wl,--no-undefined")
elseif(CMAKE_BUILD_TYPE STREQUAL Debug)
    # A function of a shared library that is declared but not written yet keeps nobody else's tests from running.
    string(APPEND CMAKE_EXE_LINKER_FLAGS " -Wl,--allow-shlib-undefined")
endif()

if(HN_FUZZ)
    add_compile_options(-Wno-deprecated-declarations)   # clang finds them inside g++'s own std::stable_sort
endif()

if(HN_SANITIZE)
    # The checks that a sanitizer puts in make g++ 12 see paths that are none.
    add_compile_options(-Wno-maybe-uninitialized -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
    add_compile_options(-fsanitize=${HN_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${HN_SANITIZE})
    if(HN_SANITIZE MATCHES undefined)
        # vptr compares type names by address, which the module's hidden symbols make differ for one and the same class.
        add_compile_options(-fno-sanitize-recover=all -fno-sanitize=vptr)
    endif()
endif()
if(HN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address)
endif()

# One cache serves every build folder of this source tree: paths below it count relative, the folder itself not at all.
find_program(HN_CCACHE ccache)
if(HN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros "${HN_CCACHE}")
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_compile_options(-fpch-preprocess)   # lets the cache see through precompiled headers
endif()

find_package(Threads REQUIRED)

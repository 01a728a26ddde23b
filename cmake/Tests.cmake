# One GoogleTest program per folder below tests/, all of them in the target `tests`; what they share is in tests/support.
# Suites named ...Threads... have the label threads, the thread sanitizer's tree runs them; `threads_tests` builds those alone.

find_package(GTest REQUIRED)
include(GoogleTest)
hn_precompiled_owner(precompiled_tests <gmock/gmock.h> <gtest/gtest.h>)
if(TARGET precompiled_tests)
    target_link_libraries(precompiled_tests PRIVATE GTest::gmock)   # for its definitions
endif()
add_custom_target(tests ALL)
add_custom_target(threads_tests)

hn_sources(sources tests/support EXCEPT "/main\\.cpp$")
if(sources)
    add_library(tests_support STATIC ${sources})
    hn_precompile(tests_support FROM precompiled_tests)
    target_include_directories(tests_support PUBLIC "${CMAKE_SOURCE_DIR}")
    hn_link(tests_support PUBLIC GTest::gmock GTest::gtest contracts toolkit)
    target_compile_definitions(tests_support PUBLIC HN_SAMPLES_DIR="${CMAKE_SOURCE_DIR}/tests/samples"
        HN_BINARY_DIR="${CMAKE_BINARY_DIR}")
endif()

# What each program links besides tests_support. Self-registering code comes as objects or as a whole archive.
set(links_toolkit toolkit)
set(links_contracts contracts toolkit)
set(links_HNManagerPlugin plugin_objects contracts toolkit)
set(links_device contracts toolkit)
set(links_host host_cli host_services CLI11::CLI11 contracts toolkit)
set(links_window host_window host_services Qt6::Widgets Qt6::Test contracts toolkit)
set(links_tools build_tools)

hn_folders(folders tests)
list(REMOVE_ITEM folders support samples)
foreach(folder IN LISTS folders)
    hn_sources(sources tests/${folder})
    if(NOT sources OR (folder STREQUAL window AND NOT TARGET host_window))
        continue()
    endif()
    set(target tests_${folder})
    add_executable(${target} ${sources})
    hn_precompile(${target} FROM precompiled_tests)
    add_dependencies(tests ${target})
    target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_compile_definitions(${target} PRIVATE HN_SAMPLES_DIR="${CMAKE_SOURCE_DIR}/tests/samples"
        HN_BINARY_DIR="${CMAKE_BINARY_DIR}")
    if(NOT folder STREQUAL tools)
        hn_link(${target} PRIVATE tests_support)
    endif()
    hn_link(${target} PRIVATE ${links_${folder}})
    if(folder STREQUAL device AND TARGET device)
        target_link_libraries(${target} PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,device>")
    endif()
    if(folder MATCHES "^(host|window)$" AND TARGET HNManagerPlugin)
        add_dependencies(${target} HNManagerPlugin)
    endif()
    if(folder STREQUAL host AND TARGET hnmanager)
        add_dependencies(${target} hnmanager)   # its tests run the program
    endif()
    if(folder STREQUAL HNManagerPlugin AND TARGET resources)
        add_dependencies(${target} resources)   # pictures and lists are read from the build folder
    endif()
    # A folder with its own main() keeps it: the archive's is then never asked for.
    target_link_libraries(${target} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)

    set(environment "")
    if(folder STREQUAL window)
        set(environment ENVIRONMENT QT_QPA_PLATFORM=offscreen)
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
    endif()
    foreach(source IN LISTS sources)
        file(STRINGS "${source}" suites REGEX "^(TEST|INSTANTIATE)[A-Z_]*\\(.*Threads")
        if(suites)
            add_dependencies(threads_tests ${target})
        endif()
    endforeach()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES TEST_FILTER "-*Threads*.*"
        PROPERTIES TIMEOUT 300 ${environment})
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES TEST_FILTER "*Threads*.*"
        PROPERTIES TIMEOUT 300 LABELS threads ${environment})
endforeach()

# The rules that a compiler does not know of.
add_dependencies(tests check_includes check_texts resources)
add_test(NAME includesPointDown COMMAND check_includes "${CMAKE_SOURCE_DIR}")
if(texts)
    add_test(NAME everyKeyHasAText
        COMMAND check_texts "${CMAKE_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/Resources/en.lproj/localization.strings")
endif()

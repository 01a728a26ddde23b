# One libFuzzer program per file fuzz/<target>.cpp, all of them in the target `fuzzers`; seeds in fuzz/corpus/<target>/.

add_custom_target(fuzzers)
file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/fuzz/*.cpp")
foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME_WE)
    set(target fuzz_${name})
    add_executable(${target} "${source}")
    add_dependencies(fuzzers ${target})
    target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    hn_link(${target} PRIVATE plugin_objects host_import device contracts toolkit)
endforeach()

# One precompiled header for all targets, one more for the tests; it halves the time that a source takes.
#
# hn_precompile(TARGET [FROM OWNER]): OWNER is `precompiled`, or `precompiled_tests`, or none for a target with flags of
# its own. A target that reuses a header must have the owner's flags; further definitions do no harm.

option(HN_PCH "use precompiled headers" ON)

function(hn_precompiled_owner owner)
    if(HN_PCH)
        add_library(${owner} OBJECT "${CMAKE_SOURCE_DIR}/cmake/Precompiled.cpp")
        target_precompile_headers(${owner} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/Precompiled.h" ${ARGN})
    endif()
endfunction()

function(hn_precompile target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FROM" "")
    if(NOT HN_PCH)
        return()
    endif()
    # Otherwise each shared library has a definition of its own, which the shared header lacks.
    set_target_properties(${target} PROPERTIES DEFINE_SYMBOL "")
    if(arg_FROM)
        target_precompile_headers(${target} REUSE_FROM ${arg_FROM})
    else()
        target_precompile_headers(${target} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/Precompiled.h")
    endif()
endfunction()

hn_precompiled_owner(precompiled)

# hn_sources(VARIABLE FOLDER [EXCEPT REGEX]): the .cpp files below FOLDER, new ones found without a second configure.
function(hn_sources variable folder)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "EXCEPT" "")
    file(GLOB_RECURSE found CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/${folder}/*.cpp")
    if(arg_EXCEPT)
        list(FILTER found EXCLUDE REGEX "${arg_EXCEPT}")
    endif()
    set(${variable} "${found}" PARENT_SCOPE)
endfunction()

# hn_link(TARGET SCOPE NAME...): links those of the names that are targets by now.
function(hn_link target scope)
    foreach(name IN LISTS ARGN)
        if(TARGET ${name})
            target_link_libraries(${target} ${scope} ${name})
        endif()
    endforeach()
endfunction()

# hn_folders(VARIABLE FOLDER): names of the folders directly below FOLDER.
function(hn_folders variable folder)
    file(GLOB entries CONFIGURE_DEPENDS LIST_DIRECTORIES true RELATIVE "${CMAKE_SOURCE_DIR}/${folder}"
        "${CMAKE_SOURCE_DIR}/${folder}/*")
    set(names "")
    foreach(entry IN LISTS entries)
        if(IS_DIRECTORY "${CMAKE_SOURCE_DIR}/${folder}/${entry}")
            list(APPEND names "${entry}")
        endif()
    endforeach()
    set(${variable} "${names}" PARENT_SCOPE)
endfunction()

# Build tools, the two text tables, the plug-in's resources; all results lie in Resources/ beside the programs.

if(HN_FUZZ)
    return()
endif()

add_library(build_tools STATIC tools/Includes.cpp tools/Source.cpp tools/StringsFile.cpp)
hn_precompile(build_tools FROM precompiled)
target_include_directories(build_tools PUBLIC "${CMAKE_SOURCE_DIR}")
foreach(tool check_includes check_texts merge_texts)
    add_executable(${tool} EXCLUDE_FROM_ALL tools/${tool}.cpp)
    set_target_properties(${tool} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tools")
    target_link_libraries(${tool} PRIVATE build_tools)
endforeach()

set(results "")

# localization/<Category>.strings make up the table "localization", InfoPlist.strings is the table "InfoPlist".
file(GLOB texts CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/localization/*.strings")
set(infoTexts ${texts})
list(FILTER texts EXCLUDE REGEX "/InfoPlist\\.strings$")
list(FILTER infoTexts INCLUDE REGEX "/InfoPlist\\.strings$")
function(hn_table name)
    if(NOT ARGN)
        return()
    endif()
    set(table "${CMAKE_BINARY_DIR}/Resources/en.lproj/${name}.strings")
    add_custom_command(OUTPUT "${table}"
        COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/Resources/en.lproj"
        COMMAND merge_texts "${table}" ${ARGN}
        DEPENDS merge_texts ${ARGN} COMMENT "Merging the text table ${name}" VERBATIM)
    set(results ${results} "${table}" PARENT_SCOPE)
endfunction()
hn_table(localization ${texts})
hn_table(InfoPlist ${infoTexts})

# Nibs are code; everything else in Resources/ is copied as it lies there.
set(from "${CMAKE_SOURCE_DIR}/HNManagerPlugin/Resources")
file(GLOB_RECURSE resources CONFIGURE_DEPENDS RELATIVE "${from}" "${from}/*")
list(FILTER resources EXCLUDE REGEX "^Nibs/|README\\.md$|\\.(cpp|h)$")
foreach(resource IN LISTS resources)
    set(to "${CMAKE_BINARY_DIR}/Resources/${resource}")
    add_custom_command(OUTPUT "${to}" COMMAND ${CMAKE_COMMAND} -E copy "${from}/${resource}" "${to}"
        DEPENDS "${from}/${resource}" COMMENT "Copying ${resource}" VERBATIM)
    list(APPEND results "${to}")
endforeach()

add_custom_target(resources ALL DEPENDS ${results})
foreach(user HNManagerPlugin hnmanager hnmanager-window)
    if(TARGET ${user})
        add_dependencies(${user} resources)
    endif()
endforeach()

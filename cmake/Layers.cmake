# SPDX-License-Identifier: Apache-2.0
# A layer is a folder, or a wing of one ("sdk/network"). It sees exactly what it names in USES: its include path holds
# one directory for each of them, with nothing in it but that folder. An include that points up, or past the neighbours,
# is not found.

# layer_include_root(<variable> <path>): a directory in which only this folder, or this one header, can be included.
function(layer_include_root variable path)
    string(REPLACE "/" "-" name ${path})
    set(root ${CMAKE_BINARY_DIR}/include-roots/${name})
    cmake_path(GET path PARENT_PATH parent)
    file(MAKE_DIRECTORY ${root}/${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${path} ${root}/${path} SYMBOLIC)
    set(${variable} ${root} PARENT_SCOPE)
endfunction()

# layer_sees(<target> <path>...): lets the target's own sources include these, and nothing else. Those that link the target
# do not get them with it.
function(layer_sees target)
    foreach(path IN LISTS ARGN)
        layer_include_root(root ${path})
        target_include_directories(${target} PRIVATE ${root})
    endforeach()
endfunction()

# layer_uses(<target> <path>...): these, and base/, which everyone may include who is not told otherwise.
function(layer_uses target)
    layer_sees(${target} ${ARGN} base)
endfunction()

# add_layer(<layer> [OBJECT] [ALONE] SOURCES <file>... [USES <layer or path>...]): the folder's target, named after it. A layer
# that it uses is linked as well, base/ always unless it is ALONE; a part of one, such as the header that is its face, is
# only seen. This is the one place where the architecture's arrows stand: LAYERS, <layer>_USES and <layer>_FLOOR, which is
# base/ or nothing, are what the tests judge includes and pictures by.
function(add_layer layer)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OBJECT;ALONE" "" "SOURCES;USES")
    string(REPLACE "/" "-" target ${layer})
    set(type STATIC)
    if(arg_OBJECT)
        set(type OBJECT)
    endif()
    set(floor base)
    if(arg_ALONE)
        set(floor "")
    endif()
    add_library(${target} ${type} ${arg_SOURCES})
    layer_sees(${target} ${layer} ${arg_USES} ${floor})
    foreach(used IN LISTS arg_USES floor)
        string(REPLACE "/" "-" used_target ${used})
        if(TARGET ${used_target} AND NOT used STREQUAL layer)
            target_link_libraries(${target} PUBLIC ${used_target})
        endif()
    endforeach()
    set_property(GLOBAL APPEND PROPERTY LAYERS ${layer})
    set_property(GLOBAL PROPERTY ${layer}_USES ${arg_USES})
    set_property(GLOBAL PROPERTY ${layer}_FLOOR ${floor})
endfunction()

# add_layer_program(<program> <layer> SOURCES <file>... [USES <layer>...]): a program out of a layer's folder, which is linked
# with the layer. What it uses beside the layer are arrows of the folder too.
function(add_layer_program program layer)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;USES")
    add_executable(${program} ${arg_SOURCES})
    get_property(own_uses GLOBAL PROPERTY ${layer}_USES)
    get_property(floor GLOBAL PROPERTY ${layer}_FLOOR)
    layer_sees(${program} ${layer} ${own_uses} ${arg_USES} ${floor})
    target_link_libraries(${program} PRIVATE ${layer} ${arg_USES})
    set_property(GLOBAL PROPERTY ${layer}_PROGRAM_USES ${arg_USES})
endfunction()

# SPDX-License-Identifier: Apache-2.0
# A layer is a folder, and sees exactly the layers it names in USES: its include path holds one directory for each
# of them, with nothing in it but that folder. An include that points up, or past the neighbours, is not found.

# layer_include_root(<variable> <layer>): a directory in which "<layer>/..." and nothing else can be included.
function(layer_include_root variable layer)
    set(root ${CMAKE_BINARY_DIR}/include-roots/${layer})
    file(MAKE_DIRECTORY ${root})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${layer} ${root}/${layer} SYMBOLIC)
    set(${variable} ${root} PARENT_SCOPE)
endfunction()

# layer_uses(<target> <layer>...): lets the target's own sources include these layers. Those that link the target do
# not get them with it.
function(layer_uses target)
    foreach(layer IN LISTS ARGN)
        layer_include_root(root ${layer})
        target_include_directories(${target} PRIVATE ${root})
    endforeach()
endfunction()

# add_layer(<layer> <library type> SOURCES <file>... [USES <layer>...])
function(add_layer layer type)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;USES")
    add_library(${layer} ${type} ${arg_SOURCES})
    layer_uses(${layer} ${layer} ${arg_USES})
endfunction()

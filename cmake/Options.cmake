# SPDX-License-Identifier: Apache-2.0
# Warnings and sanitizers for every target. CI turns warnings into errors (CMAKE_COMPILE_WARNING_AS_ERROR).
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)

set(IPC_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(IPC_SANITIZE)
    add_compile_options(-fsanitize=${IPC_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${IPC_SANITIZE})
endif()

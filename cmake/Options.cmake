# SPDX-License-Identifier: Apache-2.0
# Warnings, sanitizers and hardening for every target. CI turns warnings into errors (CMAKE_COMPILE_WARNING_AS_ERROR).
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual)

set(IPC_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(IPC_SANITIZE)
    # Simulated cameras have to answer in time here too: with -Og they take a third of the time, and no longer to compile.
    add_compile_options(-fsanitize=${IPC_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -Og -g1)
    add_link_options(-fsanitize=${IPC_SANITIZE})
endif()

# What arrives from the network is read by programs that may have a capability: a mistake in there is to end the
# program, not to be of use. A sanitizer has checks of its own in the same places.
include(CheckPIESupported)
check_pie_supported()
include(CheckCXXCompilerFlag)
set(IPC_PROTECTIONS -fstack-protector-strong)
foreach(option -fstack-clash-protection -fcf-protection)
    check_cxx_compiler_flag(${option} IPC_HAS${option})
    if(IPC_HAS${option})
        list(APPEND IPC_PROTECTIONS ${option})
    endif()
endforeach()
# Some compilers define it themselves, and it does nothing but warn where nothing is optimized.
set(IPC_FORTIFICATION "SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
set(IPC_LINK_PROTECTIONS LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
# Whoever builds packages of this gives some of them, or stronger ones, for everything that he builds.
separate_arguments(given UNIX_COMMAND "${CMAKE_CXX_FLAGS} ${CMAKE_EXE_LINKER_FLAGS}")
list(REMOVE_ITEM IPC_PROTECTIONS ${given})
if(given MATCHES _FORTIFY_SOURCE)
    set(IPC_FORTIFICATION)
endif()
list(TRANSFORM given REPLACE "^-Wl," LINKER:)
list(REMOVE_ITEM IPC_LINK_PROTECTIONS ${given})
if(NOT IPC_SANITIZE)
    add_compile_options(${IPC_PROTECTIONS} "$<$<NOT:$<CONFIG:Debug,>>:${IPC_FORTIFICATION}>")
    add_link_options(${IPC_LINK_PROTECTIONS})
endif()

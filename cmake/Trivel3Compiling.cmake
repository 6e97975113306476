# SPDX-License-Identifier: MIT
# How every target of the project is compiled and linked.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(TRIVEL3_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

option(TRIVEL3_FUZZ "Build the fuzz targets, with the sanitizers (clang only)" OFF)
if(TRIVEL3_FUZZ)
    set(TRIVEL3_SANITIZE ON)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_library(trivel3_compile_options INTERFACE)
target_compile_options(trivel3_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # g++ 12 warns of overlaps in its own std::string that cannot be.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

# Binding libstdc++.so costs a short command more time than all that it does itself. So each of our
# modules carries the few parts of the run-time that it uses, hidden from the others. What unwinds the stack
# they share: an exception, as when memory has run out, may have to pass through several modules.
if(TRIVEL3_SANITIZE)
    set(TRIVEL3_STATIC_RUNTIME OFF)
else()
    option(TRIVEL3_STATIC_RUNTIME "Link the C++ run-time into each module" ON)
endif()
if(TRIVEL3_STATIC_RUNTIME)
    target_link_options(trivel3_compile_options INTERFACE
        -static-libstdc++ LINKER:--exclude-libs,libstdc++.a:libgcc.a)
endif()

if(TRIVEL3_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(TRIVEL3_CCACHE ccache)
if(TRIVEL3_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TRIVEL3_CCACHE})
endif()

# Where CMAKE_UNITY_BUILD is on, the sources of a target are compiled some at a time as one, which takes
# half of the time or less. These stay apart: folders, and single files, that use a name which others of their
# target give another meaning.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 24)
set(TRIVEL3_APART
    pages/features
    hosts/terminal/screen/post_sheet.cpp)

# trivel3_keep_apart(SOURCE…): called in the folder of their target.
function(trivel3_keep_apart)
    foreach(source IN LISTS ARGN)
        get_filename_component(path ${source} ABSOLUTE)
        file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${path})
        get_filename_component(folder ${path} DIRECTORY)
        if(path IN_LIST TRIVEL3_APART OR folder IN_LIST TRIVEL3_APART)
            set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
    endforeach()
endfunction()

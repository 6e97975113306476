# SPDX-License-Identifier: MIT
# How every target of the project is compiled, and what each folder may see of the others.

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
# modules carries the few parts of the run-time that it uses, hidden from the others; no exception
# crosses from one module into another. A program whose libraries bring the shared run-time in anyway
# sets TRIVEL3_SHARED_RUNTIME on its target.
if(TRIVEL3_SANITIZE)
    set(TRIVEL3_STATIC_RUNTIME OFF)
else()
    option(TRIVEL3_STATIC_RUNTIME "Link the C++ run-time into each module" ON)
endif()
if(TRIVEL3_STATIC_RUNTIME)
    set(shared_runtime $<BOOL:$<TARGET_PROPERTY:TRIVEL3_SHARED_RUNTIME>>)
    target_link_options(trivel3_compile_options INTERFACE
        "$<$<NOT:${shared_runtime}>:-static-libstdc++;-static-libgcc;LINKER:--exclude-libs,libstdc++.a:libgcc.a:libgcc_eh.a>")
endif()

if(TRIVEL3_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(TRIVEL3_CCACHE ccache)
if(TRIVEL3_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TRIVEL3_CCACHE})
endif()

# trivel3_folder(TARGET FOLDER): sources of TARGET, which live in FOLDER, include headers as
# "FOLDER/…". The include path leads to this one folder and to those of the targets it links, so a
# header of any other folder is not found: who may include whom is enforced by the compiler.
function(trivel3_folder target folder)
    set(visible ${CMAKE_BINARY_DIR}/visible/${folder})
    get_filename_component(parent ${visible}/${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    if(NOT EXISTS ${visible}/${folder})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${folder} ${visible}/${folder} SYMBOLIC)
    endif()
    target_include_directories(${target} PUBLIC ${visible})
    target_link_libraries(${target} PRIVATE trivel3_compile_options)
endfunction()

# trivel3_module(TARGET FOLDER SOURCES): a module of the sources in FOLDER/SOURCES that a program loads
# when it first needs the library that the module brings in.
function(trivel3_module target folder sources)
    file(GLOB module_sources CONFIGURE_DEPENDS ${sources}/*.cpp)
    add_library(${target} MODULE ${module_sources})
    trivel3_folder(${target} ${folder})
    set_target_properties(${target} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${TRIVEL3_MODULES})
    install(TARGETS ${target} LIBRARY DESTINATION ${TRIVEL3_MODULES})
endfunction()

# SPDX-License-Identifier: MIT
# One function for each kind of target. LIBRARIES, PUBLIC and PRIVATE are what a target links, and with
# that what its sources may include.

# The programs, and all that they load or read when they run.
add_custom_target(programs)

# trivel3_folder(TARGET FOLDER…): the sources of TARGET live in FOLDER, a path from the project's root,
# and headers there are included as "FOLDER/…". The include path leads to the headers of these folders
# and to those of the targets that TARGET links, so a header of any other folder is not found: who may
# include whom is enforced by the compiler.
function(trivel3_folder target)
    foreach(folder IN LISTS ARGN)
        string(REPLACE / . name ${folder})
        set(visible ${PROJECT_BINARY_DIR}/visible/${name})
        file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.h)
        file(REMOVE_RECURSE ${visible})
        file(MAKE_DIRECTORY ${visible}/${folder})
        foreach(header IN LISTS headers)
            get_filename_component(name ${header} NAME)
            file(CREATE_LINK ${header} ${visible}/${folder}/${name} SYMBOLIC)
        endforeach()
        target_include_directories(${target} PUBLIC ${visible})
    endforeach()
    target_link_libraries(${target} PRIVATE trivel3_compile_options)
endfunction()

# trivel3_library(NAME [OBJECT|SHARED] [FOLDERS …] [PUBLIC …] [PRIVATE …]): all sources of FOLDERS, which
# are the current one unless named, but for the entries of programs and bundles.
function(trivel3_library name)
    cmake_parse_arguments(PARSE_ARGV 1 library "OBJECT;SHARED" "" "FOLDERS;PUBLIC;PRIVATE")
    set(kind STATIC)
    if(library_OBJECT)
        set(kind OBJECT)
    elseif(library_SHARED)
        set(kind SHARED)
    endif()
    if(NOT library_FOLDERS)
        set(library_FOLDERS .)
    endif()
    add_library(${name} ${kind})
    foreach(folder IN LISTS library_FOLDERS)
        get_filename_component(path ${folder} ABSOLUTE)
        file(GLOB sources CONFIGURE_DEPENDS ${path}/*.cpp)
        list(FILTER sources EXCLUDE REGEX "/(main|module)\\.cpp$")
        target_sources(${name} PRIVATE ${sources})
        trivel3_keep_apart(${sources})
        file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${path})
        trivel3_folder(${name} ${path})
    endforeach()
    target_link_libraries(${name} PUBLIC ${library_PUBLIC} PRIVATE ${library_PRIVATE})
endfunction()

# trivel3_bundle(NAME FOLDER LIBRARIES …): NAME.bundle in FOLDER of the installation: module.cpp with
# LIBRARIES in it, of which nothing can be seen from outside.
function(trivel3_bundle name folder)
    cmake_parse_arguments(PARSE_ARGV 2 bundle "" "" "LIBRARIES")
    add_library(${name} MODULE module.cpp)
    target_link_libraries(${name} PRIVATE ${bundle_LIBRARIES} trivel3_compile_options)
    target_link_options(${name} PRIVATE LINKER:--exclude-libs,ALL LINKER:--no-undefined)
    set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX "")
    trivel3_installed_in(${name} ${folder}/${name}.bundle)
    add_dependencies(programs ${name})
endfunction()

# trivel3_module(NAME FOLDER [LIBRARIES …]): the sources of FOLDER, a part of the current one, as a module that
# a program loads when it first needs the library that the module brings in.
function(trivel3_module name folder)
    cmake_parse_arguments(PARSE_ARGV 2 module "" "" "LIBRARIES")
    file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    add_library(${name} MODULE ${sources})
    trivel3_folder(${name} ${path} ${path}/${folder})
    target_link_libraries(${name} PRIVATE ${module_LIBRARIES})
    trivel3_installed_in(${name} ${TRIVEL3_MODULES})
    add_dependencies(programs ${name})
endfunction()

# trivel3_program(NAME LIBRARIES …): a program that users run, main.cpp with LIBRARIES.
function(trivel3_program name)
    cmake_parse_arguments(PARSE_ARGV 1 program "" "" "LIBRARIES")
    add_executable(${name} main.cpp)
    target_link_libraries(${name} PRIVATE ${program_LIBRARIES} trivel3_compile_options)
    trivel3_installed_in(${name} ${CMAKE_INSTALL_BINDIR})
    add_dependencies(${name} Trivel3Preferences AppList trivel3_resources)
    add_dependencies(programs ${name})
endfunction()

# trivel3_tool(NAME FOLDER SOURCES … [LIBRARIES …] [DEFINITIONS …]): a program that only developers run, in
# FOLDER of the build tree.
function(trivel3_tool name folder)
    cmake_parse_arguments(PARSE_ARGV 2 tool "" "" "SOURCES;LIBRARIES;DEFINITIONS")
    add_executable(${name} ${tool_SOURCES})
    target_link_libraries(${name} PRIVATE ${tool_LIBRARIES} trivel3_compile_options)
    target_compile_definitions(${name} PRIVATE ${tool_DEFINITIONS})
    trivel3_not_installed(${name} ${folder})
endfunction()

# trivel3_benchmark(NAME SOURCES … LIBRARIES … [DEFINITIONS …]): a measuring program, built when it is asked
# for.
function(trivel3_benchmark name)
    trivel3_tool(${name} benchmarks ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    trivel3_folder(${name} ${folder})
endfunction()

# trivel3_fuzz(NAME RUNS … SOURCES … LIBRARIES …): a fuzz target, which script/fuzz runs. RUNS is how many inputs
# `script/fuzz --check` tries, which reads it from the call.
function(trivel3_fuzz name)
    trivel3_tool(${name} fuzz ${ARGN})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    trivel3_folder(${name} fuzz ${folder})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzz_targets ${name})
endfunction()

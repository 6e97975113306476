# SPDX-License-Identifier: MIT
# Where everything lies below the installation's prefix. The build tree is laid out in the same way, so
# that programs find their libraries, bundles and data by the same relative paths in both.
include(GNUInstallDirs)

foreach(folder IN ITEMS BINDIR LIBDIR DATADIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${folder}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${folder} must be relative: programs find their parts from where they are")
    endif()
endforeach()

set(TRIVEL3_STAGING ${PROJECT_BINARY_DIR})
set(TRIVEL3_MODULES ${CMAKE_INSTALL_LIBDIR}/trivel3)
set(TRIVEL3_DATA ${CMAKE_INSTALL_DATADIR}/trivel3)
set(TRIVEL3_SYSTEM_IMAGE ${TRIVEL3_MODULES}/system)
set(TRIVEL3_BUNDLES ${TRIVEL3_SYSTEM_IMAGE}/Library/PreferenceBundles)
set(TRIVEL3_SYSTEM_BUNDLES ${TRIVEL3_SYSTEM_IMAGE}/System/Library/PreferenceBundles)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${CMAKE_INSTALL_BINDIR})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${CMAKE_INSTALL_LIBDIR})
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

# trivel3_installed_in(TARGET FOLDER): TARGET is put into FOLDER of the installation, and of the build
# tree, and finds our libraries from there.
function(trivel3_installed_in target folder)
    file(RELATIVE_PATH libraries /${folder} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${folder}
        LIBRARY_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${folder}
        INSTALL_RPATH "$ORIGIN/${libraries}")
    install(TARGETS ${target} RUNTIME DESTINATION ${folder} LIBRARY DESTINATION ${folder} NAMELINK_SKIP)
endfunction()

# trivel3_not_installed(TARGET FOLDER): TARGET is put into FOLDER of the build tree.
function(trivel3_not_installed target folder)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${folder}
        LIBRARY_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/${folder}
        INSTALL_RPATH ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
endfunction()

# trivel3_install_copy(FILE FOLDER): FILE goes into FOLDER of the installation as it is. trivel3_copy is
# then the path of the one in the build tree, for a target to depend on.
function(trivel3_install_copy file folder)
    get_filename_component(name ${file} NAME)
    set(copy ${TRIVEL3_STAGING}/${folder}/${name})
    add_custom_command(
        OUTPUT ${copy}
        COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_CURRENT_SOURCE_DIR}/${file} ${copy}
        DEPENDS ${file}
        COMMENT "Copying ${name} into ${folder}"
        VERBATIM)
    install(FILES ${file} DESTINATION ${folder})
    set(trivel3_copy ${copy} PARENT_SCOPE)
endfunction()

# trivel3_install_picture(SVG NAME ZOOM FOLDER): NAME in FOLDER of the installation is SVG rendered at
# ZOOM. trivel3_picture is then the path of the one in the build tree.
function(trivel3_install_picture svg name zoom folder)
    set(picture ${TRIVEL3_STAGING}/${folder}/${name})
    add_custom_command(
        OUTPUT ${picture}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${TRIVEL3_STAGING}/${folder}
        COMMAND ${TRIVEL3_RSVG_CONVERT} --zoom ${zoom} --output ${picture} ${svg}
        DEPENDS ${svg}
        COMMENT "Rendering ${name}"
        VERBATIM)
    install(FILES ${picture} DESTINATION ${folder})
    set(trivel3_picture ${picture} PARENT_SCOPE)
endfunction()

# SPDX-License-Identifier: MIT
# The build tree is laid out as the installed one, so that programs find their libraries, bundles
# and data by the same relative paths in both.
set(TRIVEL3_STAGING ${CMAKE_BINARY_DIR})
set(TRIVEL3_SYSTEM_IMAGE lib/trivel3/system)
set(TRIVEL3_BUNDLES ${TRIVEL3_SYSTEM_IMAGE}/Library/PreferenceBundles)
set(TRIVEL3_SYSTEM_BUNDLES ${TRIVEL3_SYSTEM_IMAGE}/System/Library/PreferenceBundles)
set(TRIVEL3_MODULES lib/trivel3)
set(TRIVEL3_DATA share/trivel3)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${TRIVEL3_STAGING}/lib)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib")
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

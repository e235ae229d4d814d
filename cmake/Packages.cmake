# SPDX-License-Identifier: Apache-2.0
#
# `cpack` in the build folder makes the Debian packages, split as the distribution would:
#   libchartbridge<N>     the library
#   libteskhost<N>        the reference host and the guard
#   libchartbridge-java   the Java classes
#   libchartbridge-dev    headers, find_package(chartbridge), pkg-config
#   chartbridge           the command
# <N> is the major version, as in the sonames. Dependencies of native files are those that
# dpkg-shlibdeps finds; those of the Java classes are the packages that own their jars.
find_program(DPKG_QUERY dpkg-query)
find_program(GZIP gzip)
mark_as_advanced(DPKG_QUERY GZIP)
if(NOT DPKG_QUERY OR NOT GZIP)
  return()
endif()

set(packaging "${PROJECT_SOURCE_DIR}/packaging/debian")
set(built "${CMAKE_BINARY_DIR}/packaging")
set(CHARTBRIDGE_MAINTAINER "chartbridge developers <developers@chartbridge.invalid>"
    CACHE STRING "Who the Debian packages name as their maintainer")

set(package_library "libchartbridge${PROJECT_VERSION_MAJOR}")
set(package_host "libteskhost${PROJECT_VERSION_MAJOR}")
set(package_java libchartbridge-java)
set(package_development libchartbridge-dev)
set(package_command chartbridge)

# The packages of the jars, in the order of the class path.
get_target_property(class_path chartbridge_jar CLASS_PATH)
string(REPLACE ":" ";" class_path "${class_path}")
list(POP_FRONT class_path)
set(java_packages "")
foreach(jar IN LISTS class_path)
  execute_process(COMMAND "${DPKG_QUERY}" --search "${jar}"
    OUTPUT_VARIABLE owner ERROR_QUIET RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(STATUS "No Debian packages: no package owns ${jar}")
    return()
  endif()
  string(REGEX REPLACE "[,:].*" "" owner "${owner}")
  list(APPEND java_packages "${owner}")
endforeach()
list(REMOVE_DUPLICATES java_packages)
list(JOIN java_packages ", " java_packages)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
set(CPACK_PACKAGE_NAME chartbridge)
set(CPACK_PACKAGE_VENDOR chartbridge)
set(CPACK_PACKAGE_CONTACT "${CHARTBRIDGE_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library host java development command)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  "${CMAKE_BINARY_DIR}" "${CMAKE_BINARY_DIR}/host" "${CMAKE_BINARY_DIR}/guard")

# package(COMPONENT SECTION SYNOPSIS DESCRIPTION): what all packages have.
macro(package component section synopsis description)
  string(TOUPPER "${component}" key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME "${package_${component}}")
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}")
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${synopsis}\n${description}")
  set(documents "${CMAKE_INSTALL_DATADIR}/doc/${package_${component}}")
  # Not in an installation by hand: there these would be four copies of the same.
  install(FILES "${packaging}/copyright" "${built}/changelog.gz"
          DESTINATION "${documents}" COMPONENT ${component} EXCLUDE_FROM_ALL)
  set(overrides "${packaging}/${component}.lintian-overrides")
  if(EXISTS "${overrides}")
    install(FILES "${overrides}" DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
            RENAME "${package_${component}}" COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endmacro()

package(library libs "charts, tree models and documents through one embedded JVM"
"A library through which native programs drive Java code in one embedded
Java virtual machine: charts from a description and data, decision trees
from PMML, chart JSON, output documents. The program supplies the virtual
machine; most take the one of ${package_host}.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${packaging}/ldconfig/triggers")

package(host libs "reference host of chartbridge, with the JNI guard"
"What libchartbridge asks of its host process, over a Java virtual machine
that is found and started at run time, and a JVM agent that turns wrong JNI
calls into Java exceptions.")
set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "${package_java} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_HOST_PACKAGE_CONTROL_EXTRA "${packaging}/ldconfig/triggers")

package(java java "Java classes that chartbridge drives"
"Draws charts and decision trees as pictures in seven formats, writes chart
JSON and output documents. Installing it also makes a class-data-sharing
archive for the Java that is there, which shortens the start.")
set(CPACK_DEBIAN_JAVA_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_JAVA_PACKAGE_DEPENDS
  "openjdk-17-jre-headless | java17-runtime-headless, ${java_packages}, \
fontconfig, fonts-dejavu-core, fonts-liberation2")
set(CPACK_DEBIAN_JAVA_PACKAGE_CONTROL_EXTRA
  "${packaging}/java/postinst" "${packaging}/java/prerm" "${packaging}/java/triggers")

# The guard's symbolic link without version is in the host's package, which needs it at run time.
package(development libdevel "development files of chartbridge"
"Headers, CMake package and pkg-config files for programs that embed
chartbridge, with or without its reference host.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${package_library} (= ${PROJECT_VERSION}), ${package_host} (= ${PROJECT_VERSION}), \
openjdk-17-jdk-headless")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake, pkg-config")

package(command graphics "draw charts and decision trees from the command line"
"Draws charts from a description and a CSV file, and decision trees from
PMML, as PNG, JPEG, GIF, BMP, SVG or PDF, writes them as JSON and documents,
and converts chart descriptions.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS
  "${package_library} (= ${PROJECT_VERSION}), ${package_host} (= ${PROJECT_VERSION})")
# The window of `tree show`.
set(CPACK_DEBIAN_COMMAND_PACKAGE_RECOMMENDS "openjdk-17-jre")

# The Debian changelog: one entry that sends the reader to the project's own.
configure_file("${packaging}/changelog.in" "${built}/changelog" @ONLY)
add_custom_command(
  OUTPUT "${built}/changelog.gz"
  COMMAND "${GZIP}" -9nkf "${built}/changelog"
  DEPENDS "${built}/changelog"
  VERBATIM)
add_custom_target(chartbridge_changelog ALL DEPENDS "${built}/changelog.gz")

include(CPack)

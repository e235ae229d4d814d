# SPDX-License-Identifier: Apache-2.0
#
# What an installation holds:
#   bin/chartbridge              the command
#   include/chartbridge/         the headers that hosts use, in their folders
#   lib/                         the library, the reference host and the guard
#   lib/cmake/chartbridge/       find_package(chartbridge)
#   share/chartbridge/           the Java classes and their class-data-sharing archive
include(CMakePackageConfigHelpers)

set(chartbridge_public_headers
  bridge/Export.h
  bridge/JAccessor.h
  bridge/JException.h
  bridge/UnicodeConverter.h
  chart/ViZEditor.h
  convert/VizConverter.h
  convert/graphBoardConverter.h
  export/ExAccessor.h
  guard/jniguard.h
  host/DebugOutput.h
  host/JvmSettings.h
  host/JvmThreads.h
  host/LocalFrame.h
  json/jsonEditor.h
  platform/ChartBase.h
  platform/ChartTransformer.h
  platform/CriticalSection.h
  platform/JNIAccessor.h
  platform/TESKMB.h
  platform/TeskJVM.h
  tree/TreeEditor.h)
foreach(header IN LISTS chartbridge_public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${PROJECT_SOURCE_DIR}/${header}"
          DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/chartbridge/${folder}")
endforeach()

# The installation can be moved as a whole: everything is found from where it lies.
file(RELATIVE_PATH libraries_from_command
  "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set_target_properties(chartbridge_app PROPERTIES
  INSTALL_RPATH "$ORIGIN/${libraries_from_command}")
set_target_properties(chartbridge teskhost jniguard PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS chartbridge teskhost jniguard EXPORT chartbridgeTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(TARGETS chartbridge_app RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

set(chartbridge_data_dir "${CMAKE_INSTALL_DATADIR}/chartbridge")
set(chartbridge_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/chartbridge")
set(chartbridge_jar "${CMAKE_BINARY_DIR}/java/chartbridge-runtime.jar")
install(FILES "${chartbridge_jar}" "${CMAKE_BINARY_DIR}/java/libraries.txt"
        DESTINATION "${chartbridge_data_dir}")

install(EXPORT chartbridgeTargets NAMESPACE chartbridge:: DESTINATION "${chartbridge_package_dir}")
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/chartbridgeConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfig.cmake"
  INSTALL_DESTINATION "${chartbridge_package_dir}"
  PATH_VARS chartbridge_data_dir)
write_basic_package_version_file(
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfig.cmake"
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfigVersion.cmake"
  DESTINATION "${chartbridge_package_dir}")

# The class-data-sharing archive belongs to one JVM, one jar and one path of that jar, so the build
# folder and the installation each have their own. It saves time and nothing else: where it cannot
# be made, the command runs without it.
set(chartbridge_archive_script "${PROJECT_SOURCE_DIR}/cmake/MakeClassArchive.cmake")
set(chartbridge_archive "${CMAKE_BINARY_DIR}/java/chartbridge.jsa")
if(NOT CHARTBRIDGE_SANITIZE)
  add_custom_command(
    OUTPUT "${chartbridge_archive}"
    COMMAND "${CMAKE_COMMAND}"
      -D "COMMAND=$<TARGET_FILE:chartbridge_app>"
      -D "EXAMPLES=${PROJECT_SOURCE_DIR}/examples"
      -D "ARCHIVE=${chartbridge_archive}"
      -P "${chartbridge_archive_script}"
    DEPENDS chartbridge_app "${chartbridge_jar}" "${chartbridge_archive_script}"
    COMMENT "Java: chartbridge.jsa"
    VERBATIM)
  add_custom_target(chartbridge_archive ALL DEPENDS "${chartbridge_archive}")
  add_dependencies(chartbridge_archive chartbridge_jar jniguard)

  install(CODE "
    if(\"\$ENV{DESTDIR}\" STREQUAL \"\")
      execute_process(COMMAND \"${CMAKE_COMMAND}\"
        -D \"COMMAND=\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/chartbridge\"
        -D \"EXAMPLES=${PROJECT_SOURCE_DIR}/examples\"
        -D \"ARCHIVE=\${CMAKE_INSTALL_PREFIX}/${chartbridge_data_dir}/chartbridge.jsa\"
        -P \"${chartbridge_archive_script}\")
    endif()")
endif()

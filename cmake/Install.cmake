# SPDX-License-Identifier: Apache-2.0
#
# What an installation holds, by component:
#   library       lib/                        libchartbridge.so
#   host          lib/                        the reference host and the guard
#   java          share/chartbridge/          the Java classes
#   development   include/chartbridge/        the headers that hosts use, in their folders
#                 lib/cmake/chartbridge/      find_package(chartbridge)
#                 lib/pkgconfig/              chartbridge, chartbridge-host and chartbridge-guard
#   command       bin/chartbridge             the command
#                 share/man/man1/             its manual pages
#                 share/bash-completion/      its completion, for bash,
#                 share/zsh/                  zsh
#                 share/fish/                 and fish
#   archive       share/chartbridge/          the class-data-sharing archive of the Java classes
include(CMakePackageConfigHelpers)

foreach(header IN LISTS chartbridge_public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${PROJECT_SOURCE_DIR}/${header}"
          DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/chartbridge/${folder}"
          COMPONENT development)
endforeach()

# The installation can be moved as a whole: everything is found from where it lies.
file(RELATIVE_PATH libraries_from_command
  "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set_target_properties(chartbridge_app PROPERTIES
  INSTALL_RPATH "$ORIGIN/${libraries_from_command}")
set_target_properties(chartbridge teskhost jniguard PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS chartbridge EXPORT chartbridgeTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT library NAMELINK_COMPONENT development)
install(TARGETS teskhost EXPORT chartbridgeTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT host NAMELINK_COMPONENT development)
# The JVM option -agentpath and the reference host name the guard without a version.
install(TARGETS jniguard EXPORT chartbridgeTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT host)
install(TARGETS chartbridge_app
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT command)

# Below /usr the linker looks by itself, and distributions forbid search paths there.
set(runpath_files_host teskhost jniguard)
set(runpath_files_library chartbridge)
foreach(component library host)
  foreach(target IN LISTS runpath_files_${component})
    list(APPEND without_runpath_${component}
      "${CMAKE_INSTALL_LIBDIR}/lib${target}.so.${PROJECT_VERSION}")
  endforeach()
endforeach()
set(without_runpath_command "${CMAKE_INSTALL_BINDIR}/chartbridge")
foreach(component library host command)
  install(CODE "
    if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
      foreach(file IN ITEMS ${without_runpath_${component}})
        file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}/usr/\${file}\")
      endforeach()
    endif()" COMPONENT ${component})
endforeach()

set(chartbridge_data_dir "${CMAKE_INSTALL_DATADIR}/chartbridge")
set(chartbridge_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/chartbridge")
set(chartbridge_jar "${CMAKE_BINARY_DIR}/java/chartbridge-runtime.jar")
install(FILES "${chartbridge_jar}" "${CMAKE_BINARY_DIR}/java/libraries.txt"
        DESTINATION "${chartbridge_data_dir}" COMPONENT java)

install(EXPORT chartbridgeTargets NAMESPACE chartbridge::
        DESTINATION "${chartbridge_package_dir}" COMPONENT development)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/chartbridgeConfig.cmake.in"
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfig.cmake"
  INSTALL_DESTINATION "${chartbridge_package_dir}"
  PATH_VARS chartbridge_data_dir)
write_basic_package_version_file(
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfig.cmake"
  "${CMAKE_BINARY_DIR}/cmake/chartbridgeConfigVersion.cmake"
  DESTINATION "${chartbridge_package_dir}" COMPONENT development)

set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH prefix_from_pkgconfig "/prefix/${pkgconfig_dir}" /prefix)
foreach(module chartbridge chartbridge-host chartbridge-guard)
  configure_file("${PROJECT_SOURCE_DIR}/packaging/pkgconfig/${module}.pc.in"
                 "${CMAKE_BINARY_DIR}/pkgconfig/${module}.pc" @ONLY)
  install(FILES "${CMAKE_BINARY_DIR}/pkgconfig/${module}.pc"
          DESTINATION "${pkgconfig_dir}" COMPONENT development)
endforeach()

set(completions "${PROJECT_SOURCE_DIR}/packaging/completion")
install(FILES "${completions}/chartbridge.bash"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME chartbridge
        COMPONENT command)
install(FILES "${completions}/chartbridge.fish"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT command)
# zsh looks into site-functions below /usr/local; below /usr Debian has a folder for packages.
install(CODE "
  set(zsh_folder site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\" AND EXISTS /etc/debian_version)
    set(zsh_folder vendor-completions)
  endif()
  file(INSTALL \"${completions}/_chartbridge\"
    DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${zsh_folder}\")"
  COMPONENT command)

# The manual pages are made by running the command, which an instrumented build makes slow.
if(CHARTBRIDGE_SANITIZE)
  return()
endif()
set(man_dir "${CMAKE_BINARY_DIR}/man")
set(man_sources "${PROJECT_SOURCE_DIR}/packaging/man")
add_custom_command(
  OUTPUT "${man_dir}/chartbridge.1.gz"
  COMMAND "${man_sources}/make-man-pages"
    "$<TARGET_FILE:chartbridge_app>" "${PROJECT_VERSION}" "${man_dir}"
  DEPENDS chartbridge_app "${man_sources}/make-man-pages" "${man_sources}/help-to-roff.awk"
    "${man_sources}/common.roff"
  COMMENT "Manual pages"
  VERBATIM)
add_custom_target(chartbridge_man ALL DEPENDS "${man_dir}/chartbridge.1.gz")
install(DIRECTORY "${man_dir}/" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT command)

# The class-data-sharing archive belongs to one JVM, one jar and one path of that jar, so the build
# folder and the installation each have their own. It saves time and nothing else: where it cannot
# be made, everything runs without it.
set(chartbridge_archive_script "${PROJECT_SOURCE_DIR}/cmake/MakeClassArchive.cmake")
set(chartbridge_class_list "${CMAKE_BINARY_DIR}/java/chartbridge.classlist")
set(chartbridge_archive_maker "${CMAKE_BINARY_DIR}/java/make-class-archive")
file(COPY "${PROJECT_SOURCE_DIR}/java/make-class-archive" DESTINATION "${CMAKE_BINARY_DIR}/java")
add_custom_command(
  OUTPUT "${chartbridge_class_list}"
  COMMAND "${CMAKE_COMMAND}"
    -D "COMMAND=$<TARGET_FILE:chartbridge_app>"
    -D "EXAMPLES=${PROJECT_SOURCE_DIR}/examples"
    -D "CLASS_LIST=${chartbridge_class_list}"
    -D "MAKER=${chartbridge_archive_maker}"
    -D "JAVA_HOME=${JAVA_HOME}"
    -P "${chartbridge_archive_script}"
  DEPENDS chartbridge_app "${chartbridge_jar}" "${chartbridge_archive_script}"
    "${PROJECT_SOURCE_DIR}/java/make-class-archive"
  COMMENT "Java: chartbridge.jsa"
  VERBATIM)
add_custom_target(chartbridge_archive ALL DEPENDS "${chartbridge_class_list}")
add_dependencies(chartbridge_archive jniguard chartbridge_jar)

install(FILES "${chartbridge_class_list}"
        DESTINATION "${chartbridge_data_dir}" COMPONENT java)
install(PROGRAMS "${PROJECT_SOURCE_DIR}/java/make-class-archive"
        DESTINATION "${chartbridge_data_dir}" COMPONENT java)
# For a staged installation it can only be made where the files will lie.
install(CODE "
  if(\"\$ENV{DESTDIR}\" STREQUAL \"\")
    execute_process(COMMAND
      \"\${CMAKE_INSTALL_PREFIX}/${chartbridge_data_dir}/make-class-archive\" \"${JAVA_HOME}\"
      RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
      message(STATUS \"no class-data-sharing archive: \${output}\")
    endif()
  endif()" COMPONENT archive)

include(Packages)

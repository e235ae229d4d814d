# SPDX-License-Identifier: Apache-2.0
#
# Installs the npm packages of a manifest into a folder, exactly as its lock file says:
#   cmake -D NPM=... -D FOLDER=... -D MANIFEST=... -D OMITTED=... -P InstallPackages.cmake
set(way_out "or build without `chartbridge view`: -D CHARTBRIDGE_VIEWER=OFF")
if(NOT NPM)
  message(FATAL_ERROR
    "npm was not found when this build was configured. Install it (scripts/setup does), configure "
    "again, ${way_out}")
endif()

file(MAKE_DIRECTORY "${FOLDER}")
foreach(file IN LISTS MANIFEST)
  file(COPY "${file}" DESTINATION "${FOLDER}")
endforeach()
# No script of a package runs: none of them needs one.
execute_process(
  COMMAND "${NPM}" ci --ignore-scripts --no-audit --no-fund ${OMITTED}
  WORKING_DIRECTORY "${FOLDER}"
  RESULT_VARIABLE status
  OUTPUT_VARIABLE output
  ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR
    "${output}\nThe scripts of interactive pages could not be fetched from npm. See that its "
    "registry can be reached, ${way_out}")
endif()
file(TOUCH "${FOLDER}/node_modules/.package-lock.json")

# SPDX-License-Identifier: Apache-2.0
#
# Makes a class-data-sharing archive for the Java classes that a run of the command loads:
#   cmake -D COMMAND=chartbridge -D TRAINING=folder -D ARCHIVE=file -P MakeClassArchive.cmake
#
# TRAINING holds charts; each is rendered once, with the data of the same name, in a JVM that lists
# the classes it loads. Then a JVM with the same class path writes them to the archive. Without an
# archive the command works as well, so nothing here is an error; the file is then empty.
set(work "${ARCHIVE}.work")
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
file(REMOVE "${ARCHIVE}")

# Runs the command with JVM options of its own.
function(run_command options result)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env "TESK_JVM_OPTIONS=${options}" --unset=TESK_CLASSPATH
            --unset=DumpChartTimePath "${COMMAND}" ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(${result} "${status}" PARENT_SCOPE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(GLOB charts "${TRAINING}/*.gpl")
set(class_list "")
foreach(chart IN LISTS charts)
  cmake_path(REPLACE_EXTENSION chart LAST_ONLY csv OUTPUT_VARIABLE data)
  cmake_path(GET chart STEM name)
  foreach(type png svg)
    set(list "${work}/${name}-${type}.txt")
    run_command("-Xshare:off -XX:DumpLoadedClassList=${list}" status
      render "${chart}" --data "${data}" -o "${work}/${name}.${type}" --no-guard)
    if(EXISTS "${list}")
      file(READ "${list}" classes)
      string(APPEND class_list "${classes}")
    endif()
  endforeach()
endforeach()

set(list "${work}/classes.txt")
file(WRITE "${list}" "${class_list}")
run_command("-Xshare:dump -XX:SharedClassListFile=${list} -XX:SharedArchiveFile=${ARCHIVE}" status
  render "${chart}" --data "${data}" -o "${work}/none.png" --no-guard)
file(REMOVE_RECURSE "${work}")
if(NOT EXISTS "${ARCHIVE}")
  message(STATUS "no class-data-sharing archive: ${output}")
  file(TOUCH "${ARCHIVE}")
endif()

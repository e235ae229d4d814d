# SPDX-License-Identifier: Apache-2.0
#
# Makes the list of classes of a class-data-sharing archive, and the archive of a build folder:
#   cmake -D COMMAND=chartbridge -D EXAMPLES=folder -D CLASS_LIST=file -D MAKER=make-class-archive
#         -D JAVA_HOME=folder -P MakeClassArchive.cmake
#
# A few of the examples are rendered, each in a JVM that lists the classes it loads. Everything works
# without an archive as well, so nothing here is an error.

# chart:data:ending of the picture
set(training
  air.gpl:air:png
  cars.gpl:cars:png
  co2.gpl:co2:png
  geyser.gpl:geyser:png
  nottingham.gpl:nottingham:png
  phones.gpl:phones:svg
  phones-growth.xml:phones:png
  titanic-classes.gpl:titanic:png
  virginia.gpl:virginia:png)

set(work "${CLASS_LIST}.work")
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")

# Runs the command on one example, with more options for the JVM.
function(render options chart data ending)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env --unset=TESK_CLASSPATH --unset=DumpChartTimePath
      "TESK_JVM_OPTIONS=${options}" "JAVA_HOME=${JAVA_HOME}"
      "${COMMAND}" render "${EXAMPLES}/charts/${chart}" --data "${EXAMPLES}/data/${data}.csv"
      -o "${work}/${chart}.${ending}" --no-guard
    OUTPUT_QUIET ERROR_QUIET)
endfunction()

file(WRITE "${CLASS_LIST}.new" "")
foreach(example IN LISTS training)
  string(REPLACE ":" ";" example "${example}")
  list(GET example 0 chart)
  set(loaded "${work}/${chart}.txt")
  render("-Xshare:off -XX:DumpLoadedClassList=${loaded}" ${example})
  if(EXISTS "${loaded}")
    file(READ "${loaded}" classes)
    file(APPEND "${CLASS_LIST}.new" "${classes}")
  endif()
endforeach()
file(RENAME "${CLASS_LIST}.new" "${CLASS_LIST}")
file(REMOVE_RECURSE "${work}")

execute_process(COMMAND "${MAKER}" "${JAVA_HOME}"
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(STATUS "no class-data-sharing archive: ${output}")
endif()

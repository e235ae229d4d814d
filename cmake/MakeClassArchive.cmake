# SPDX-License-Identifier: Apache-2.0
#
# Makes a class-data-sharing archive of what a run of the command loads:
#   cmake -D COMMAND=chartbridge -D EXAMPLES=folder -D CLASS_LIST=file -D ARCHIVE=file [-D TRAIN=ON]
#         -P MakeClassArchive.cmake
#
# TRAIN makes the list of classes first: a few of the examples are rendered, each in a JVM that
# lists the classes it loads. Then a JVM with the same class path writes the listed classes to the
# archive. The command works without an archive as well, so nothing here is an error; where none can
# be made, the file stays empty.

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

set(work "${ARCHIVE}.work")
file(REMOVE_RECURSE "${work}")
file(MAKE_DIRECTORY "${work}")
file(REMOVE "${ARCHIVE}")

# Runs the command on one example, with more options for the JVM.
function(render options chart data ending)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E env --unset=TESK_CLASSPATH --unset=DumpChartTimePath
      "TESK_JVM_OPTIONS=${options}"
      "${COMMAND}" render "${EXAMPLES}/charts/${chart}" --data "${EXAMPLES}/data/${data}.csv"
      -o "${work}/${chart}.${ending}" --no-guard
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  set(output "${output}" PARENT_SCOPE)
endfunction()

if(TRAIN)
  file(WRITE "${CLASS_LIST}" "")
  foreach(example IN LISTS training)
    string(REPLACE ":" ";" example "${example}")
    list(GET example 0 chart)
    set(loaded "${work}/${chart}.txt")
    render("-Xshare:off -XX:DumpLoadedClassList=${loaded}" ${example})
    if(EXISTS "${loaded}")
      file(READ "${loaded}" classes)
      file(APPEND "${CLASS_LIST}" "${classes}")
    endif()
  endforeach()
endif()

# The default collector can also put objects of the JDK into the archive. The JVM that writes an
# archive ends when it is written; the example that it is started for is not rendered.
render("-XX:-UseSerialGC -XX:+UseG1GC -Xshare:dump -XX:SharedClassListFile=${CLASS_LIST} \
-XX:SharedArchiveFile=${ARCHIVE}" air.gpl air png)

file(REMOVE_RECURSE "${work}")
if(NOT EXISTS "${ARCHIVE}")
  message(STATUS "no class-data-sharing archive: ${output}")
  file(TOUCH "${ARCHIVE}")
endif()

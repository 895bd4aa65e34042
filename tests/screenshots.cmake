# The manual's pictures: the tool makes one for each picture committed in
# docs/images, and two runs give the same bytes.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home)
foreach(run a b)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env HOME=${WORK}/home LANG=C.UTF-8
            QT_QPA_PLATFORM=offscreen:configfile=${SOURCE}/tools/kuvo-shots/screen.json
            QT_ENABLE_HIGHDPI_SCALING=0 QT_STYLE_OVERRIDE=Fusion
            ${SHOTS} ${STORE} ${WORK}/${run}
    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 300)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "kuvo-shots failed (${status}):\n${out}${err}")
  endif()
endforeach()
file(GLOB made RELATIVE ${WORK}/a ${WORK}/a/*.png)
file(GLOB committed RELATIVE ${SOURCE}/docs/images ${SOURCE}/docs/images/*.png)
list(SORT made)
list(SORT committed)
if(NOT made STREQUAL committed)
  message(FATAL_ERROR "pictures made:\n  ${made}\ncommitted in docs/images:\n  ${committed}")
endif()
foreach(picture ${made})
  file(SHA256 ${WORK}/a/${picture} first)
  file(SHA256 ${WORK}/b/${picture} second)
  if(NOT first STREQUAL second)
    message(FATAL_ERROR "${picture} differs between two runs")
  endif()
  file(SIZE ${WORK}/a/${picture} size)
  if(size LESS 5000)
    message(FATAL_ERROR "${picture} is nearly empty (${size} bytes)")
  endif()
endforeach()
list(LENGTH made count)
message(STATUS "${count} pictures, the same bytes twice")
file(REMOVE_RECURSE ${WORK})

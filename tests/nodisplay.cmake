# Without a display the program says so in one French line and exits with 1:
# with no display at all, and with one that does not answer.
set(expected "Kuvo a besoin d'une session graphique pour s'afficher, et aucun écran n'est disponible : lancez-le depuis le bureau.")
foreach(display "" ":4242")
  if(display STREQUAL "")
    set(env --unset=DISPLAY)
  else()
    set(env DISPLAY=${display})
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env ${env} --unset=WAYLAND_DISPLAY --unset=QT_QPA_PLATFORM
            LANG=C.UTF-8 ${PROGRAM}
    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 30)
  if(NOT status EQUAL 1)
    message(FATAL_ERROR "DISPLAY='${display}': exit status ${status}, not 1\n${err}")
  endif()
  if(NOT out STREQUAL "" OR NOT err STREQUAL "${expected}\n")
    message(FATAL_ERROR "DISPLAY='${display}': said\n${out}${err}\ninstead of\n${expected}")
  endif()
endforeach()
message(STATUS "One French line and status 1 without a display")

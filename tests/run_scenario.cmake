# Runs one scenario script and compares what it prints with the expected output.
execute_process(COMMAND ${DRIVER} ${SCRIPT}
  OUTPUT_VARIABLE actual ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "kuvo-script exited with ${status}\n${errors}\n${actual}")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  get_filename_component(dir ${EXPECTED} DIRECTORY)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/actual.out "${actual}")
  execute_process(COMMAND diff -u ${EXPECTED} ${CMAKE_CURRENT_BINARY_DIR}/actual.out
    OUTPUT_VARIABLE difference)
  message(FATAL_ERROR "Output differs from ${EXPECTED}:\n${difference}")
endif()

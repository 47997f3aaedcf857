# cmake -DCOMMAND=program;argument -DEXPECTED=file -P check.cmake: what it prints is what the file says.
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
file(READ ${EXPECTED} expected)
if(NOT result EQUAL 0 OR NOT output STREQUAL expected)
  message(FATAL_ERROR "ended with ${result}, printed:\n${output}${errors}\nexpected:\n${expected}")
endif()

# Runs PROGRAM on FOLDER and fails unless it succeeds and prints what the file EXPECTED holds.
execute_process(COMMAND "${PROGRAM}" "${FOLDER}" OUTPUT_VARIABLE printed RESULT_VARIABLE status)
file(READ "${EXPECTED}" expected)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "exit code ${status}")
endif()
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "expected\n${expected}\nprinted\n${printed}")
endif()

# cmake -DPROGRAM="[<emulator>;]..." -DEXPECTED=... -P CompareOutput.cmake: fails unless the program ends well and
# prints just what the file holds.
execute_process(COMMAND ${PROGRAM} RESULT_VARIABLE status OUTPUT_VARIABLE printed
    ERROR_VARIABLE complaints)
file(READ ${EXPECTED} expected)
if(NOT status EQUAL 0 OR NOT complaints STREQUAL "" OR NOT printed STREQUAL expected)
    message(FATAL_ERROR "Status ${status}, printed:\n${printed}${complaints}\nExpected:\n${expected}")
endif()

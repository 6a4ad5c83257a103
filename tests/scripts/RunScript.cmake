# Runs one script through kst-script and compares its merged output with the expected file.
get_filename_component(name ${SCRIPT} NAME)
string(REGEX REPLACE "\\.js$" ".out" expected_file ${SCRIPT})
execute_process(COMMAND ${TOOL} ${name} OUTPUT_VARIABLE output ERROR_VARIABLE output)
file(READ ${expected_file} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "Output of ${name} differs.\n--- expected\n${expected}\n--- actual\n${output}")
endif()

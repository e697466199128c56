# Replays JOURNAL with qorfmt-replay on a fresh copy of the example site, never on the site
# itself. EXPECT_EXIT (default 0) is the exit code the replay must end with; EXPECT_OUTPUT, when
# not empty, a text its output must contain.
if(NOT DEFINED EXPECT_EXIT)
    set(EXPECT_EXIT 0)
endif()
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/ DESTINATION ${WORK}/examples)
execute_process(
    COMMAND ${REPLAY} ${JOURNAL} --site ${WORK}/examples/site --library ${LIBRARY}
    RESULT_VARIABLE exit_code
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
message("${output}")
if(NOT exit_code EQUAL EXPECT_EXIT)
    message(FATAL_ERROR "qorfmt-replay ${JOURNAL} ended with ${exit_code}, not ${EXPECT_EXIT}")
endif()
if(NOT "${EXPECT_OUTPUT}" STREQUAL "")
    string(FIND "${output}" "${EXPECT_OUTPUT}" found)
    if(found EQUAL -1)
        message(FATAL_ERROR "qorfmt-replay ${JOURNAL} did not report: ${EXPECT_OUTPUT}")
    endif()
endif()

# Read by ctest before it runs the tests: names each suite of the GoogleTest program `program` to it, as
# one test with `label` in `environment`, so that a program starts once for all cases that belong together.

if(NOT EXISTS ${program})
    get_filename_component(name ${program} NAME)
    add_test(${name}_is_not_built ${program})
    return()
endif()
execute_process(COMMAND ${program} --gtest_list_tests OUTPUT_VARIABLE cases COMMAND_ERROR_IS_FATAL ANY)
# A suite begins its line and ends in a full stop; its cases stand indented below it.
string(REGEX MATCHALL "(^|\n)[^ \n]+\\.[ \n]" suites "${cases}")
foreach(suite IN LISTS suites)
    string(REGEX REPLACE "^\n|\\.[ \n]$" "" suite "${suite}")
    add_test(${suite} ${program} --gtest_filter=${suite}.*)
    set_tests_properties(${suite} PROPERTIES TIMEOUT 300 LABELS "${label}" ENVIRONMENT "${environment}")
endforeach()

# The tests of the logic again under valgrind, which finds uninitialized values in addition to the sanitizers' faults.
# Only for builds without instrumentation, and for one compiler.
find_program(VALGRIND valgrind)
if(NOT VALGRIND OR TESSEL_SANITIZE OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    return()
endif()

function(tessel_memory_check program excluded)
    add_test(NAME MemoryCheck.${program}
        COMMAND ${VALGRIND} --quiet --error-exitcode=9 --leak-check=full
            --show-leak-kinds=definite,indirect --errors-for-leak-kinds=definite,indirect
            $<TARGET_FILE:${program}> --gtest_brief=1 --gtest_filter=-${excluded})
    set_tests_properties(MemoryCheck.${program} PROPERTIES LABELS "memory;whole" TIMEOUT 300)
endfunction()

tessel_memory_check(CoreTests "")
# A test that stops its process on purpose leaks on purpose.
tessel_memory_check(LogicTests "*Death*:*LongRun.*")

# A program's tests, one by one. Suites whose names begin with "Whole" take long and add little to the others; they have
# the label "whole".
function(tessel_discover_tests program)
    set(whole "Whole*:*/Whole*")
    gtest_discover_tests(${program} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES TEST_FILTER "-${whole}")
    gtest_discover_tests(${program} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES TEST_FILTER "${whole}"
        PROPERTIES LABELS whole TIMEOUT 300)
endfunction()

# How every target of the project is compiled. Targets link this privately; nothing is set globally.
add_library(TesselBuildSettings INTERFACE)

target_compile_features(TesselBuildSettings INTERFACE cxx_std_23)
target_include_directories(TesselBuildSettings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(TesselBuildSettings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    # A constructor's parameter may bear the name of the member that it fills; g++ cannot tell that from a mistake.
    $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>
    -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wnull-dereference -Wimplicit-fallthrough -Wextra-semi
    # Floating-point contraction would make geometry differ between processors.
    -ffp-contract=off)

if(TESSEL_SANITIZE)
    target_compile_options(TesselBuildSettings INTERFACE
        -fsanitize=${TESSEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(TesselBuildSettings INTERFACE -fsanitize=${TESSEL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The sanitizers' instrumentation hides from g++ that a pointer was checked.
        target_compile_options(TesselBuildSettings INTERFACE -Wno-null-dereference)
    endif()
endif()

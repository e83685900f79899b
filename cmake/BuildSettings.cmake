# How every target of the project is compiled. Targets link this privately; nothing is set globally.
add_library(TesselBuildSettings INTERFACE)

target_compile_features(TesselBuildSettings INTERFACE cxx_std_23)
target_include_directories(TesselBuildSettings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(TesselBuildSettings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    # A constructor's parameter may bear the name of the member that it fills; g++ cannot tell that from a mistake.
    $<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>
    -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wimplicit-fallthrough -Wextra-semi
    # g++ 12 suspects the standard library's own allocations.
    $<$<CXX_COMPILER_ID:Clang>:-Wnull-dereference>
    # Floating-point contraction would make geometry differ between processors.
    -ffp-contract=off)

if(TESSEL_SANITIZE)
    target_compile_options(TesselBuildSettings INTERFACE
        -fsanitize=${TESSEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(TesselBuildSettings INTERFACE -fsanitize=${TESSEL_SANITIZE})
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Joining a literal and a string is mistaken for an overlapping copy (GCC bug 105329), and a variant's inactive
    # members for uninitialized ones (GCC bug 105593).
    target_compile_options(TesselBuildSettings INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()

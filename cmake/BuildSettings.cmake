# Compiler settings of every target of the project. Targets link this privately; nothing is set globally.
add_library(TesselBuildSettings INTERFACE)

target_compile_features(TesselBuildSettings INTERFACE cxx_std_23)
target_include_directories(TesselBuildSettings INTERFACE ${PROJECT_SOURCE_DIR})
# A constructor's parameter may have the name of the member that it fills; g++ warns about that. If several sources are
# compiled as one, clang compares a parameter with the constants of all of them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(shadowing -Wshadow=local)
elseif(NOT CMAKE_UNITY_BUILD)
    set(shadowing -Wshadow)
endif()

target_compile_options(TesselBuildSettings INTERFACE
    -Wall -Wextra -Wpedantic
    ${shadowing}
    -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wimplicit-fallthrough -Wextra-semi
    # g++ 12 warns about the standard library's own allocations.
    $<$<CXX_COMPILER_ID:Clang>:-Wnull-dereference>
    # Floating-point contraction would make geometry differ between processors.
    -ffp-contract=off)

if(TESSEL_SANITIZE)
    target_compile_options(TesselBuildSettings INTERFACE
        -fsanitize=${TESSEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(TesselBuildSettings INTERFACE -fsanitize=${TESSEL_SANITIZE})
endif()

# Sanitizers check more than this does. Fortified functions need an optimizing compiler.
if(TESSEL_HARDEN AND NOT TESSEL_SANITIZE)
    target_compile_options(TesselBuildSettings INTERFACE
        -fstack-protector-strong -fstack-clash-protection
        $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
    target_link_options(TesselBuildSettings INTERFACE LINKER:-z,relro LINKER:-z,now)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ mistakes joining a literal and a string for an overlapping copy (GCC bug 105329), and a variant's inactive
    # members for uninitialized ones (GCC bug 105593).
    target_compile_options(TesselBuildSettings INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()

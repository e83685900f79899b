# Compiles through ccache if it is installed. Paths are relative to the sources' folder. CMake still names the joined
# sources of the unity build by absolute path, so builds in another folder share only a part of the cache.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

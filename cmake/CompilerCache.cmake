# Compiles go through ccache where it is installed. Paths are told from the sources' folder on; CMake still names the
# sources that it joins by their whole path, so that builds at another place share only a part of what is kept.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

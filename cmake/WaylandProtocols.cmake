# Generates C from the description of a Wayland protocol, for a client target: NAME-client-protocol.h and its code. That
# happens when CMake runs, so that checkers which do not build find the header, too.
function(tessel_wayland_protocol target name description)
    set(protocol ${CMAKE_CURRENT_BINARY_DIR}/${name})
    execute_process(
        COMMAND ${WAYLAND_SCANNER} client-header ${description} ${protocol}-client-protocol.h
        COMMAND_ERROR_IS_FATAL ANY)
    execute_process(
        COMMAND ${WAYLAND_SCANNER} private-code ${description} ${protocol}-protocol.c
        COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${description})
    target_sources(${target} PRIVATE ${protocol}-client-protocol.h ${protocol}-protocol.c)
    target_include_directories(${target} SYSTEM PUBLIC ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

# The compositor's side of the same: NAME-server-protocol.h.
function(tessel_wayland_server_header target name description)
    set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}-server-protocol.h)
    execute_process(
        COMMAND ${WAYLAND_SCANNER} server-header ${description} ${header}
        COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${description})
    target_sources(${target} PRIVATE ${header})
    target_include_directories(${target} SYSTEM PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

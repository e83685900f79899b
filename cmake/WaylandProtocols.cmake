# Generates C from the description of a Wayland protocol, for a client target: NAME-client-protocol.h and its code.
function(tessel_wayland_protocol target name description)
    set(protocol ${CMAKE_CURRENT_BINARY_DIR}/${name})
    add_custom_command(
        OUTPUT ${protocol}-client-protocol.h
        COMMAND ${WAYLAND_SCANNER} client-header ${description} ${protocol}-client-protocol.h
        DEPENDS ${description}
        VERBATIM)
    add_custom_command(
        OUTPUT ${protocol}-protocol.c
        COMMAND ${WAYLAND_SCANNER} private-code ${description} ${protocol}-protocol.c
        DEPENDS ${description}
        VERBATIM)
    target_sources(${target} PRIVATE ${protocol}-client-protocol.h ${protocol}-protocol.c)
    target_include_directories(${target} SYSTEM PUBLIC ${CMAKE_CURRENT_BINARY_DIR})
endfunction()

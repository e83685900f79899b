# Writes the message bus's service file during the installation: its prefix may differ from the configured one.
set(program "${CMAKE_INSTALL_PREFIX}/${bindir}/tessel")
if(program MATCHES "[^A-Za-z0-9_./+-]")
    set(program "\"${program}\"")
endif()
set(service "${CMAKE_INSTALL_PREFIX}/${service_folder}/org.corvid.Tessel.service")
configure_file("${template}" "$ENV{DESTDIR}${service}" @ONLY)
list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${service}")

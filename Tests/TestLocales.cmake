# A locale with a collation order of its own, built here so that no test depends on the locales of this machine.
find_program(LOCALEDEF localedef REQUIRED)
set(TESSEL_TEST_LOCALES ${CMAKE_CURRENT_BINARY_DIR}/locales)
add_custom_command(
    OUTPUT ${TESSEL_TEST_LOCALES}/de_DE.UTF-8/LC_COLLATE
    COMMAND ${CMAKE_COMMAND} -E make_directory ${TESSEL_TEST_LOCALES}
    COMMAND ${LOCALEDEF} --no-archive -i de_DE -f UTF-8 ${TESSEL_TEST_LOCALES}/de_DE.UTF-8
    VERBATIM)
add_custom_target(TestLocales DEPENDS ${TESSEL_TEST_LOCALES}/de_DE.UTF-8/LC_COLLATE)

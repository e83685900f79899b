# CPack reads this first: the program in a package sends its users to the maker's website.
if(NOT CPACK_PACKAGE_HOMEPAGE_URL)
    message(FATAL_ERROR "There is no website for the package: configure with -DTESSEL_WEBSITE=https://HOST")
endif()

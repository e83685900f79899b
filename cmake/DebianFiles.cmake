# CPack runs this on the package's files: it adds the files that Debian requires beside the program's own (Debian
# Policy, chapter 12), and compresses those that Debian requires compressed.
set(root "${CPACK_TEMPORARY_INSTALL_DIRECTORY}")
set(documents "${root}/usr/share/doc/tessel")
file(MAKE_DIRECTORY "${documents}")

function(compress source target)
    execute_process(COMMAND gzip -9n INPUT_FILE "${source}" OUTPUT_FILE "${target}" COMMAND_ERROR_IS_FATAL ANY)
    file(CHMOD "${target}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

compress("${CPACK_TESSEL_DEBIAN_FOLDER}/changelog" "${documents}/changelog.Debian.gz")
configure_file("${CPACK_TESSEL_DEBIAN_FOLDER}/copyright" "${documents}/copyright" @ONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
# The copyright file contains it as well.
file(REMOVE "${documents}/OFL.txt")

file(GLOB pages "${root}/usr/share/man/man*/*.[0-9]")
foreach(page IN LISTS pages)
    compress("${page}" "${page}.gz")
    file(REMOVE "${page}")
endforeach()

# Debian's zsh searches here for the completions of packages.
file(MAKE_DIRECTORY "${root}/usr/share/zsh/vendor-completions" "${root}/usr/share/lintian/overrides")
file(RENAME "${root}/usr/share/zsh/site-functions/_tessel" "${root}/usr/share/zsh/vendor-completions/_tessel")
file(REMOVE_RECURSE "${root}/usr/share/zsh/site-functions")

configure_file("${CPACK_TESSEL_DEBIAN_FOLDER}/lintian-overrides" "${root}/usr/share/lintian/overrides/tessel" COPYONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

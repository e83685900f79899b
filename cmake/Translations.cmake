# The program's languages, the source language first. Each has a file for either table of texts in
# Resources/translations; docs/translating.md explains how to add one.
set(TESSEL_LANGUAGES en de fr es it pt_BR ja ko zh_CN)
set(TESSEL_TEXT_TABLES Tessel CorvidKit)

# The output folder of Resources/translations: TABLE_LANGUAGE.qm for the toolkit, and below share/locale, as installed,
# one catalogue for each language, for the program without a toolkit.
set(TESSEL_QM_FOLDER ${CMAKE_BINARY_DIR}/translations)
set(TESSEL_LOCALE_TREE ${CMAKE_BINARY_DIR}/share/locale)

# Adds the translations to a program or library that links Qt Core: ":/translations/TABLE_LANGUAGE.qm".
function(tessel_embed_translations target)
    set(files)
    foreach(table IN LISTS TESSEL_TEXT_TABLES)
        foreach(language IN LISTS TESSEL_LANGUAGES)
            list(APPEND files ${TESSEL_QM_FOLDER}/${table}_${language}.qm)
        endforeach()
    endforeach()
    set_source_files_properties(${files} PROPERTIES GENERATED TRUE)
    qt_add_resources(${target} ${target}_translations PREFIX /translations BASE ${TESSEL_QM_FOLDER} FILES ${files})
    add_dependencies(${target} Translations)
endfunction()

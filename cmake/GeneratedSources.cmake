# Sources that Qt's tools generate may have warnings.
function(tessel_accept_generated_sources target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/\\.rcc/|_qmltyperegistrations\\.cpp$")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w SKIP_LINTING ON)
endfunction()

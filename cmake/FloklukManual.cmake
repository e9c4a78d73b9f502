# The manual: docs/manual/LANGUAGE/PAGE.md becomes DOC/html/LANGUAGE/PAGE.html, where pandoc is installed. Pictures and
# style sheets keep their places; links between pages follow.
set(manual ${PROJECT_SOURCE_DIR}/docs/manual)
set(html ${PROJECT_BINARY_DIR}/manual)
file(GLOB pages RELATIVE ${manual} CONFIGURE_DEPENDS ${manual}/*/*.md)
find_program(PANDOC pandoc)
mark_as_advanced(PANDOC)
if(NOT PANDOC OR NOT pages)
    return()
endif()

set(style "")
if(EXISTS ${manual}/manual.css)
    set(style --css=../manual.css)
endif()
set(outputs "")
foreach(page IN LISTS pages)
    get_filename_component(language ${page} DIRECTORY)
    get_filename_component(name ${page} NAME_WE)
    set(output ${html}/${language}/${name}.html)
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${html}/${language}
        COMMAND ${PANDOC} --standalone --from=markdown --to=html5 --mathml --shift-heading-level-by=-1
            --metadata=lang:${language} --metadata=pagetitle:${name} ${style}
            --lua-filter=${PROJECT_SOURCE_DIR}/cmake/ManualLinks.lua --output=${output} ${manual}/${page}
        DEPENDS ${manual}/${page} ${PROJECT_SOURCE_DIR}/cmake/ManualLinks.lua
        COMMENT "Manual page ${language}/${name}" VERBATIM)
    list(APPEND outputs ${output})
endforeach()
add_custom_target(manual ALL DEPENDS ${outputs})
install(DIRECTORY ${html}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html)
install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html
    FILES_MATCHING PATTERN "*.png" PATTERN "*.svg" PATTERN "*.css" PATTERN "*.json")

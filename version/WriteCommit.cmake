# cmake -DSOURCE=folder -DHEADER=file -P WriteCommit.cmake: writes the header that names the commit of the sources, when
# it is another one than there. The commit is that of the environment (FLOKLUK_COMMIT, for who builds from a copy), of the
# repository, or of the archive that git made; else none.
set(commit "$ENV{FLOKLUK_COMMIT}")
if(commit STREQUAL "" AND EXISTS "${SOURCE}/.git")
    find_program(GIT git)
    if(GIT)
        execute_process(COMMAND ${GIT} -C ${SOURCE} describe --always --dirty --abbrev=10 --exclude *
            OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
endif()
if(commit STREQUAL "" AND EXISTS "${SOURCE}/version/commit.txt")
    file(STRINGS "${SOURCE}/version/commit.txt" commit LIMIT_COUNT 1)
endif()
if(NOT commit MATCHES "^[0-9a-zA-Z.+~-]+$") # the archive's placeholder among others
    set(commit "")
endif()
set(text "#define FLOKLUK_COMMIT \"${commit}\"\n")
set(old "")
if(EXISTS "${HEADER}")
    file(READ "${HEADER}" old)
endif()
if(NOT old STREQUAL text)
    file(WRITE "${HEADER}" "${text}")
endif()

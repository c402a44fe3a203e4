# Writes the unit that names the commit of the sources, at every build, but only if it has changed.
#
#   cmake -D SOURCE=DIR -D GIT=PROGRAM -D OUTPUT=FILE -P source_commit.cmake
#
# In a repository git knows the commit, and whether files differ from it; an archive of the sources has it in a file.

set(commit unknown)
if(EXISTS ${SOURCE}/.git AND GIT)
  set(ask ${GIT} -c safe.directory=* -C ${SOURCE})
  execute_process(COMMAND ${ask} rev-parse --short=12 HEAD OUTPUT_VARIABLE found ERROR_QUIET
                  OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE failed)
  if(NOT failed)
    set(commit ${found})
    execute_process(COMMAND ${ask} status --porcelain --untracked-files=no OUTPUT_VARIABLE changes ERROR_QUIET)
    if(changes)
      string(APPEND commit -dirty)
    endif()
  endif()
else()
  file(READ ${SOURCE}/packaging/source_commit.txt found)
  if(found MATCHES "^([0-9a-f]+) ")
    string(SUBSTRING ${CMAKE_MATCH_1} 0 12 commit)
  endif()
endif()

set(text "#include \"job/version/version_text.h\"\n\nnamespace varnolix::job {\n
const char* sourceCommit() {\n    return \"${commit}\";\n}\n
}  // namespace varnolix::job\n")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} before)
endif()
if(NOT text STREQUAL before)
  file(WRITE ${OUTPUT} "${text}")
endif()

# Makes the manual pages, compressed, from what exists: those of the companion and of its commands from their --help, by
# help2man, and that of the dialogue, which takes no arguments, from docs/manual.md, by lowdown.
#
#   cmake -D COMPANION=FILE -D MANUAL=FILE -D VERSION=X.Y.Z -D DESCRIPTION=TEXT -D OUTPUT=DIR
#         -D HELP2MAN=FILE -D LOWDOWN=FILE -P manual_pages.cmake
#
# The pages of a tool that is not there are left out. The date of the pages is SOURCE_DATE_EPOCH's where that is set.

file(REMOVE_RECURSE ${OUTPUT})
file(MAKE_DIRECTORY ${OUTPUT})
set(source "VARNOLIX ${VERSION}")
set(heading "User Commands")

# save_page(NAME TEXT): writes a page. gzip leaves out name and time, so that equal pages are equal files.
function(save_page name text)
  file(WRITE ${OUTPUT}/${name}.1 "${text}")
  execute_process(COMMAND gzip -9nf ${OUTPUT}/${name}.1 COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# list_commands(RESULT WORDS): appends every command below these words to the variable, such as "collections install".
function(list_commands result words)
  separate_arguments(arguments UNIX_COMMAND "${words}")
  execute_process(COMMAND ${COMPANION} ${arguments} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "\n(Subc|C)ommands:\n([^\n]+\n)+" section "\n${help}")
  string(REGEX MATCHALL "\n  [a-z][a-z-]*" names "${section}")
  set(found ${${result}})
  foreach(name ${names})
    string(REGEX REPLACE "^\n  " "" name "${name}")
    string(STRIP "${words} ${name}" command)
    list(APPEND found "${command}")
    list_commands(found "${command}")
  endforeach()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

# page_name(RESULT WORDS): "varnolix-job-collections-install" for "collections install".
function(page_name result words)
  string(STRIP "varnolix-job ${words}" name)
  string(REPLACE " " "-" name "${name}")
  set(${result} ${name} PARENT_SCOPE)
endfunction()

# companion_page(WORDS INCLUDED): makes the page of a command; no words for the companion itself. Its description is the
# second line of the help.
function(companion_page words included)
  page_name(name "${words}")
  separate_arguments(arguments UNIX_COMMAND "${words}")
  execute_process(COMMAND ${COMPANION} ${arguments} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^[^\n]*\n(.*)$" "\\1" rest "${help}")
  string(REGEX REPLACE "\\.?\n.*$" "" description "${rest}")
  string(SUBSTRING "${description}" 0 1 first)
  string(SUBSTRING "${description}" 1 -1 others)
  string(TOLOWER "${first}" first)
  execute_process(COMMAND ${HELP2MAN} --no-info --section=1 --name=${first}${others} --version-string=${VERSION}
                          "--help-option=${words} --help" --source=${source} --manual=${heading} --include=${included}
                          ${COMPANION}
                  OUTPUT_VARIABLE page COMMAND_ERROR_IS_FATAL ANY)
  # help2man names the page after the program.
  string(TOUPPER ${name} title)
  string(REGEX REPLACE "\n\\.TH [^ ]+ " "\n.TH ${title} " page "${page}")
  string(REGEX REPLACE "\n\\.SH NAME\n[^ ]+ " "\n.SH NAME\n${name} " page "${page}")
  save_page(${name} "${page}")
endfunction()

if(HELP2MAN)
  set(commands)
  list_commands(commands "")
  set(others "varnolix(1)")
  foreach(command "" ${commands})
    page_name(name "${command}")
    string(APPEND others ", ${name}(1)")
  endforeach()
  set(included ${OUTPUT}/see_also.h2m)
  file(WRITE ${included} "[SEE ALSO]\n${others}\n")
  companion_page("" ${included})
  foreach(command ${commands})
    companion_page("${command}" ${included})
  endforeach()
  file(REMOVE ${included})
endif()

if(LOWDOWN)
  file(READ ${MANUAL} text)
  string(REGEX REPLACE "^# Manual\n\n(- [^\n]*\n)+" "" text "${text}")
  # Sections move up by one level, and links are only their text.
  string(REGEX REPLACE "\n#(#+ )" "\n\\1" text "${text}")
  string(REGEX REPLACE "\\[([^]\n]+)\\]\\([^)\n]*\\)" "\\1" text "${text}")
  file(WRITE ${OUTPUT}/manual.md
       "# Name\n\nvarnolix - ${DESCRIPTION}\n\n# Synopsis\n\n**varnolix**\n\n# Description\n${text}")
  execute_process(COMMAND ${LOWDOWN} -s -tman -M title=VARNOLIX -M section=1 -M source=${source} -M volume=${heading}
                          ${OUTPUT}/manual.md
                  OUTPUT_VARIABLE page COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${OUTPUT}/manual.md)
  # mandb takes what the page is about from a section headed in this form.
  string(REPLACE "\n.SH\n" "\n.SH " page "${page}")
  string(REPLACE "\n.SH Name\n" "\n.SH NAME\n" page "${page}")
  # The narrow columns of tables are not adjusted on both sides (groff 1.23 is told by the string AD, as each of its
  # sections adjusts again), and long paths in them may be broken.
  string(REGEX REPLACE "(\n\\.TH [^\n]*\n)" "\\1.ds AD l\n.na\n" page "${page}")
  # Newer ones do not know the old name of this font.
  string(REPLACE "\\fC" "\\f(CR" page "${page}")
  string(REGEX REPLACE "([a-z0-9>][/_])([A-Za-z])" "\\1\\\\:\\2" page "${page}")
  # The first line lets man prepare the tables.
  save_page(varnolix "'\\\" t\n${page}")
endif()

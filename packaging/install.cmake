# What `cmake --install` puts where. Below share/varnolix the paths are those of the sources, so that the companion and
# the scripts of job folders find the same files in both.
#
# The components are the binary packages: `program` for the dialogue, `job` for the companion.

set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(data ${CMAKE_INSTALL_DATADIR}/varnolix)
set(documents ${CMAKE_INSTALL_DATADIR}/doc/varnolix)

install(TARGETS varnolix DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
install(TARGETS varnolix-job DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT job)

# The client of the logo workers depends on the machine, and the worker has to be beside it.
set(client ${CMAKE_INSTALL_LIBEXECDIR}/varnolix/weblogo-3.4)
install(TARGETS weblogo_client DESTINATION ${client} COMPONENT program)
install(FILES tools/weblogo-3.4/weblogo_worker.py tools/weblogo-3.4/calls-may-overlap DESTINATION ${client}
        COMPONENT program)

install(PROGRAMS tools/bin/php5 DESTINATION ${data}/tools/bin COMPONENT program)
install(FILES tools/prince.php tools/prince-calls-may-overlap tools/README.md DESTINATION ${data}/tools
        COMPONENT program)
install(FILES tools/fonts/fonts.conf tools/fonts/paper.css DESTINATION ${data}/tools/fonts COMPONENT program)
install(DIRECTORY tools/R/dendextend DESTINATION ${data}/tools/R COMPONENT program)
# The stand-in for a package of R, where setup.sh found that it is needed.
install(DIRECTORY build/R-library/ DESTINATION ${data}/R-library COMPONENT program OPTIONAL)

install(FILES tools/tree_newick.R DESTINATION ${data}/tools COMPONENT job)
install(DIRECTORY tools/page tools/many DESTINATION ${data}/tools COMPONENT job)
install(PROGRAMS tools/job_folder/run DESTINATION ${data}/tools/job_folder COMPONENT job)
install(FILES scripts/run_job.py scripts/motif_preview.py scripts/job_process.py DESTINATION ${data}/scripts
        COMPONENT job)
install(FILES tools/completion/varnolix-job DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        COMPONENT job)

set(pages ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${VARNOLIX_MANUAL_PAGES}/varnolix.1.gz DESTINATION ${pages} COMPONENT program OPTIONAL)
install(DIRECTORY ${VARNOLIX_MANUAL_PAGES}/ DESTINATION ${pages} COMPONENT job FILES_MATCHING PATTERN varnolix-job*)

# The reference collections, which the administrator adds; their places and what goes there.
install(FILES databases/README.md DESTINATION ${data}/databases COMPONENT program)
foreach(folder jaspar transfac uniprobe)
  install(DIRECTORY databases/${folder} DESTINATION ${data}/databases COMPONENT program PATTERN .gitkeep EXCLUDE)
endforeach()

install(FILES README.md DESTINATION ${documents} COMPONENT program)
if(NOT VARNOLIX_PACKAGE_RELEASE)
  install(FILES CHANGELOG.md DESTINATION ${documents} COMPONENT program)
endif()
install(DIRECTORY docs examples DESTINATION ${documents} COMPONENT program)
file(GLOB licences CONFIGURE_DEPENDS LICENSE* LICENCE* COPYING* NOTICE*)
if(licences)
  install(FILES ${licences} DESTINATION ${documents} COMPONENT program)
endif()

# Debian packages by CPack, as scripts/package.sh makes them: `varnolix` with the dialogue, `varnolix-job` with the
# companion. VARNOLIX_PACKAGE_RELEASE is the part of the package's version behind that of the program; without it only
# the names are set.

set(VARNOLIX_PACKAGE_RELEASE "" CACHE STRING "What follows the version in that of Debian packages, such as 1~deb12")

set(maintainer "VARNOLIX maintainers <maintainers@varnolix.example>")
set(version ${PROJECT_VERSION}-${VARNOLIX_PACKAGE_RELEASE})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME varnolix)
set(CPACK_PACKAGE_CONTACT ${maintainer})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "comparison of DNA sequence motifs")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL program job)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VARNOLIX_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# What a run goes on without is recommended; scripts/setup.sh says what each is for. A package that a release does not
# have is passed over by apt.
set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME varnolix)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_RECOMMENDS
    "python3, python3-weblogo, ghostscript, php-cli, weasyprint | chromium, fonts-liberation, fonts-dejavu-core, \
r-base-core, r-cran-ape, r-cran-dendextend, r-cran-ggplot2, r-cran-ggdendro")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "VARNOLIX compares DNA sequence motifs with each other and with a reference
collection, ranks the matches, and reports them as text, HTML or PDF, with
alignments, logos, merged motifs and a tree.
.
This package holds the program with its dialogue, and what connects it to the
outside tools. Text reports need none of the recommended packages.")

set(CPACK_DEBIAN_JOB_PACKAGE_NAME varnolix-job)
set(CPACK_DEBIAN_JOB_PACKAGE_DEPENDS "varnolix (= ${version})")
set(CPACK_DEBIAN_JOB_PACKAGE_RECOMMENDS "python3, parallel, libjs-jquery, libjs-jquery-datatables, node-d3")
set(CPACK_DEBIAN_JOB_PACKAGE_SUGGESTS "parallel, slurm-wlm")
set(CPACK_DEBIAN_JOB_DESCRIPTION "VARNOLIX compares DNA sequence motifs with each other and with a reference
collection, ranks the matches, and reports them with alignments, logos,
merged motifs and a tree.
.
This package holds the companion for the command line. It reads motif files
as they are downloaded, runs the whole job, and writes tables and a page for
browsers beside the reports; it also installs reference collections and makes
job folders for the dialogue.")

if(VARNOLIX_PACKAGE_RELEASE)
  # Its date is that of SOURCE_DATE_EPOCH, where that is set.
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  set(folder ${PROJECT_BINARY_DIR}/packaging)
  # Debian's name for the list of changes.
  configure_file(CHANGELOG.md ${folder}/changelog COPYONLY)
  execute_process(COMMAND gzip -9nf ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${folder}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/varnolix COMPONENT program)
  foreach(component program job)
    string(TOUPPER ${component} key)
    set(package ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
    file(WRITE ${folder}/${package}/changelog.Debian
         "varnolix (${version}) unstable; urgency=medium\n\n"
         "  * Version ${PROJECT_VERSION}; /usr/share/doc/varnolix/changelog.gz lists the changes.\n\n"
         " -- ${maintainer}  ${date}\n")
    execute_process(COMMAND gzip -9nf ${folder}/${package}/changelog.Debian COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${folder}/${package}/changelog.Debian.gz packaging/copyright
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  endforeach()
endif()
include(CPack)

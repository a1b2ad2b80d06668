# Debian packages with CPack (make package): libkivcore0 (the shared library), libkivcore-dev (headers, CMake
# package, pkg-config file, the link name) and kivtool (the program and its manual page), one per install
# component. Run-time dependencies come from the binaries (dpkg-shlibdeps), not from this file.

set(KIVCORE_DEBIAN_REVISION 1)
set(KIVCORE_DEBIAN_VERSION ${PROJECT_VERSION}-${KIVCORE_DEBIAN_REVISION})
set(KIVCORE_DEBIAN_DIR ${PROJECT_SOURCE_DIR}/packaging/debian)

# A release changes the project version and the changelog together.
file(STRINGS ${KIVCORE_DEBIAN_DIR}/changelog kivcore_changelog_head LIMIT_COUNT 1)
if(NOT kivcore_changelog_head MATCHES "^kivcore \\(${KIVCORE_DEBIAN_VERSION}\\) ")
    message(FATAL_ERROR "packaging/debian/changelog starts with '${kivcore_changelog_head}', "
        "not with an entry for ${KIVCORE_DEBIAN_VERSION}")
endif()

# Each package carries the copyright file and the compressed changelog in its own doc folder.
if(KIVCORE_PACKAGING)
    set(kivcore_changelog_gz ${CMAKE_BINARY_DIR}/changelog.Debian.gz)
    add_custom_command(OUTPUT ${kivcore_changelog_gz}
        COMMAND gzip -9n -c ${KIVCORE_DEBIAN_DIR}/changelog > ${kivcore_changelog_gz}
        DEPENDS ${KIVCORE_DEBIAN_DIR}/changelog VERBATIM)
    add_custom_target(kivcore_changelog ALL DEPENDS ${kivcore_changelog_gz})
    foreach(component_package Runtime:libkivcore0 Development:libkivcore-dev Tool:kivtool)
        string(REPLACE ":" ";" pair ${component_package})
        list(GET pair 0 component)
        list(GET pair 1 package)
        install(FILES ${KIVCORE_DEBIAN_DIR}/copyright ${kivcore_changelog_gz}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
        # Lintian overrides, each with its reason, in packaging/debian/<package>/lintian-overrides.
        if(EXISTS ${KIVCORE_DEBIAN_DIR}/${package}/lintian-overrides)
            install(FILES ${KIVCORE_DEBIAN_DIR}/${package}/lintian-overrides
                DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package} COMPONENT ${component})
        endif()
    endforeach()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kivcore)
set(CPACK_PACKAGE_VENDOR "kivcore maintainers")
set(CPACK_PACKAGE_CONTACT "kivcore maintainers <maintainers@kivcore.example.org>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Tool)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${KIVCORE_DEBIAN_REVISION})
set(CPACK_DEBIAN_PACKAGE_SOURCE kivcore)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# kivtool links the library of the same build: dpkg-shlibdeps finds it in the build tree.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/src)

# Synopsis on the first line, then the extended description; CPack indents it as Debian wants.
set(kivcore_description_body
"kivcore parses product description files (XML with the roots product_module
and product_ic) and EtherCAT slave information files into in-memory model
trees, and renders them as debug text, HTML pages, LaTeX manual fragments,
JSON and C headers. Bad files give a null result and a log message.")

# The shlibs file (written for the packages that hold a shared library: libkivcore0) tells dpkg-shlibdeps of
# other packages which libkivcore0 their programs need; any later 0.x serves them, as the SONAME promises.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkivcore0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${KIVCORE_DEBIAN_DIR}/libkivcore0/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "library for product module, IC and EtherCAT ESI description files\n${kivcore_description_body}\n\nThis package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkivcore-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libkivcore0 (= ${KIVCORE_DEBIAN_VERSION}), qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "development files for kivcore\n${kivcore_description_body}\n\nThis package holds the headers, the CMake package (find_package(KivCore))\nand the pkg-config file (kivcore).")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME kivtool)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
# dpkg-shlibdeps passes over the library of the same build; the shlibs file of libkivcore0 would say this.
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libkivcore0 (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "tool for product module, IC and EtherCAT ESI description files\nkivtool prints summaries and debug text of product module, IC and ESI files,\nwrites HTML pages, LaTeX fragments and typeset manuals, JSON exports and\nC headers, and decodes and encodes register values.")

include(CPack)

# make docs: the API reference of the installed headers in build/docs/html. A Doxygen warning fails it, and
# so does a public class without a brief (scripts/check-docs.py over Doxygen's XML output).
set(KIVCORE_DOCS_DIR ${CMAKE_BINARY_DIR}/docs)
find_program(KIVCORE_DOXYGEN doxygen)
find_program(KIVCORE_PYTHON3 python3)
if(KIVCORE_DOXYGEN AND KIVCORE_PYTHON3)
    configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${KIVCORE_DOCS_DIR}/Doxyfile @ONLY)
    add_custom_target(docs
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${KIVCORE_DOCS_DIR}/html ${KIVCORE_DOCS_DIR}/xml
        COMMAND ${KIVCORE_DOXYGEN} ${KIVCORE_DOCS_DIR}/Doxyfile
        COMMAND ${KIVCORE_PYTHON3} ${PROJECT_SOURCE_DIR}/scripts/check-docs.py ${KIVCORE_DOCS_DIR}/xml
        WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
        COMMENT "API reference in ${KIVCORE_DOCS_DIR}/html"
        VERBATIM)
else()
    add_custom_target(docs
        COMMAND ${CMAKE_COMMAND} -E echo "make docs needs doxygen and python3: scripts/install-deps.sh docs"
        COMMAND ${CMAKE_COMMAND} -E false
        VERBATIM)
endif()

# The target docs: the API reference as HTML, from the comments of the public headers, in the groups of docs/groups.dox, and the pages
# under docs/.

find_package(Doxygen REQUIRED OPTIONAL_COMPONENTS dot)

set(DOXYGEN_PROJECT_NAME nyXml)
set(DOXYGEN_STRIP_FROM_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_STRIP_FROM_INC_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_FILE_PATTERNS "*.h" "*.md" "*.dox")
set(DOXYGEN_EXCLUDE_PATTERNS "*/detail/*" "*/nyXml/*/README.md") # what is in-house, and what is for those who work on the sources
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE "${PROJECT_SOURCE_DIR}/README.md")
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_PREDEFINED "NYXML_EXPORT=")
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
# A member whose name says all has no comment, nor has a parameter.
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_WARN_IF_INCOMPLETE_DOC NO)
set(DOXYGEN_QUIET YES)
doxygen_add_docs(docs "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/nyXml" "${PROJECT_SOURCE_DIR}/docs" ALL)

# The target docs: the API reference as HTML, from the comments of the public headers, in the groups of docs/groups.dox, and the pages
# under docs/.

find_package(Doxygen REQUIRED)

set(DOXYGEN_PROJECT_NAME nyXml)
set(DOXYGEN_STRIP_FROM_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_STRIP_FROM_INC_PATH "${PROJECT_SOURCE_DIR}")
set(DOXYGEN_FILE_PATTERNS "*.h" "*.md" "*.dox")
set(DOXYGEN_EXCLUDE_PATTERNS "*/detail/*" "*/samples/*" "*/nyXml/*/README.md" "*/nyXmlKit/*README.md") # what is in-house, and what is for those who work on the sources
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE "${PROJECT_SOURCE_DIR}/README.md")
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_PREDEFINED "NYXML_EXPORT=")
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
# A member whose name says all has no comment, nor has a parameter.
set(DOXYGEN_EXTRACT_ALL YES)
set(DOXYGEN_WARN_IF_INCOMPLETE_DOC NO)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_HAVE_DOT NO)
# Pages on the left, a search on top, no lists of files: who looks for a class looks in the groups.
set(DOXYGEN_GENERATE_TREEVIEW YES)
set(DOXYGEN_DISABLE_INDEX NO)
set(DOXYGEN_FULL_SIDEBAR NO)
set(DOXYGEN_SEARCHENGINE YES)
set(DOXYGEN_SHOW_FILES NO)
set(DOXYGEN_VERBATIM_HEADERS NO)
set(DOXYGEN_HTML_EXTRA_STYLESHEET "${PROJECT_SOURCE_DIR}/docs/site.css")
set(DOXYGEN_IMAGE_PATH "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/docs/pictures")
# The pages stand in the order of the guide; one that it does not name comes behind them.
file(STRINGS "${PROJECT_SOURCE_DIR}/docs/index.md" nyxml_guide_rows REGEX "\\]\\([a-zA-Z-]+\\.md\\)")
set(nyxml_pages "${PROJECT_SOURCE_DIR}/docs/index.md")
foreach(row IN LISTS nyxml_guide_rows)
    string(REGEX MATCHALL "\\(([a-zA-Z-]+\\.md)\\)" links "${row}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "[()]" "" link "${link}")
        list(APPEND nyxml_pages "${PROJECT_SOURCE_DIR}/docs/${link}")
    endforeach()
endforeach()
doxygen_add_docs(docs
    "${PROJECT_SOURCE_DIR}/README.md" ${nyxml_pages} "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/nyXml"
    "${PROJECT_SOURCE_DIR}/nyXmlKit" ALL)

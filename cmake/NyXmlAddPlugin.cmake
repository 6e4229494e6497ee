# nyxml_add_plugin(<name> <source>...)
#
# Builds the plug-in <name>.nyp, a library with one class that a document may name and a factory loads at run time. The target is
# called <name>; the usual properties move it (LIBRARY_OUTPUT_DIRECTORY) or link more to it.
#
# Only what its sources mark with NYXML_EXPORT leaves the plug-in: the two functions by which the factory knows it, getClassToken
# and getCreator, and what the plug-in means to share with others.

function(nyxml_add_plugin name)
    if(NOT ARGN)
        message(FATAL_ERROR "nyxml_add_plugin(${name}): no sources")
    endif()
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE nyXml::nyXml)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        SUFFIX ".nyp"
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()

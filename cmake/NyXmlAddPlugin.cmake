# nyxml_add_plugin(<name> <source>...)
#
# Builds the plug-in <name>.nyp, a library with one class that a document may name and a factory loads at run time. The target is
# called <name>; the usual properties move it (LIBRARY_OUTPUT_DIRECTORY) or link more to it.
#
# Only what its sources mark with NYXML_EXPORT leaves the plug-in: the two functions by which the factory knows it, getClassToken
# and getCreator, and what the plug-in means to share with others.
#
# A static nyXml has no plug-ins: each would bring a copy of the library, and with it classes that are not the application's.

function(nyxml_add_plugin name)
    if(NOT ARGN)
        message(FATAL_ERROR "nyxml_add_plugin(${name}): no sources")
    endif()
    get_target_property(kind nyXml::nyXml TYPE)
    if(kind STREQUAL "STATIC_LIBRARY")
        message(FATAL_ERROR "nyxml_add_plugin(${name}): a static nyXml has no plug-ins; build nyXml with BUILD_SHARED_LIBS=ON")
    endif()
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE nyXml::nyXml)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        SUFFIX ".nyp"
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
endfunction()

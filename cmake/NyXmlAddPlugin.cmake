# nyxml_add_plugin(<name> <source>...)
#
# Builds the plug-in <name>.nyp, a library with one class that a document may name and a factory loads at run time. The target is
# called <name>; the usual properties move it (LIBRARY_OUTPUT_DIRECTORY) or link more to it.
#
# Only what its sources mark with NYXML_EXPORT leaves the plug-in: the two functions by which the factory knows it, getClassToken
# and getCreator, and what the plug-in means to share with others.
#
# A plug-in that lacks one of the two ends the build with a line that says what to write. The property NYXML_UNCHECKED lets it pass.
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
    add_custom_command(TARGET ${name} POST_BUILD
        COMMAND "${CMAKE_COMMAND}" "-DNM=${CMAKE_NM}" "-DPLUGIN=$<TARGET_FILE:${name}>"
            "-DUNCHECKED=$<BOOL:$<TARGET_PROPERTY:${name},NYXML_UNCHECKED>>" -P "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/NyXmlCheckPlugin.cmake"
        VERBATIM)
endfunction()

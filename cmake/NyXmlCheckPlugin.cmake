# Run when a plug-in is linked: cmake -DNM=<nm> -DPLUGIN=<file> -P NyXmlCheckPlugin.cmake
#
# A plug-in without its two functions is a library like any other to the linker, and no plug-in at all to the factory.

if(UNCHECKED)
    return()
endif()
execute_process(COMMAND "${NM}" --dynamic --defined-only "${PLUGIN}" OUTPUT_VARIABLE symbols RESULT_VARIABLE result ERROR_QUIET)
if(NOT result EQUAL 0)
    return() # no tool to look with
endif()
cmake_path(GET PLUGIN FILENAME file)
foreach(declaration IN ITEMS "NyToken const* getClassToken(int index)" "NyXmlCreator getCreator(int index)")
    string(REGEX MATCH "get[A-Za-z]+" name "${declaration}")
    if(NOT symbols MATCHES " ${name}\n")
        file(REMOVE "${PLUGIN}") # the next build says it again
        message(FATAL_ERROR "${file} is no plug-in without: extern \"C\" NYXML_EXPORT ${declaration}")
    endif()
endforeach()

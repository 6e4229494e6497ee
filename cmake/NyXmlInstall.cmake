# Headers, library, CMake package, pkg-config file and printers for gdb. A package is made of each component, see NyXmlPackages.cmake.

include(CMakePackageConfigHelpers)

set(nyxml_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nyXml")

install(TARGETS nyXml EXPORT nyXmlTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/nyXml" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN "platform/detail" EXCLUDE PATTERN "NyFromChars.h" EXCLUDE)

if(NYXML_BUILD_KIT)
    install(TARGETS nyXmlKit EXPORT nyXmlKitTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT kit NAMELINK_COMPONENT kitDevelopment
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT kitDevelopment
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/nyXmlKit" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT kitDevelopment
        FILES_MATCHING PATTERN "*.h" PATTERN "NyXmlFromChars.h" EXCLUDE)
    install(EXPORT nyXmlKitTargets NAMESPACE nyXml:: DESTINATION "${nyxml_package_dir}" COMPONENT kitDevelopment)
endif()

install(EXPORT nyXmlTargets NAMESPACE nyXml:: DESTINATION "${nyxml_package_dir}" COMPONENT development)
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/nyXmlConfig.cmake.in" "${PROJECT_BINARY_DIR}/nyXmlConfig.cmake"
    INSTALL_DESTINATION "${nyxml_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/nyXmlConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/nyXmlConfig.cmake"
    "${PROJECT_BINARY_DIR}/nyXmlConfigVersion.cmake"
    DESTINATION "${nyxml_package_dir}" COMPONENT development)
install(FILES "${CMAKE_CURRENT_LIST_DIR}/NyXmlAddPlugin.cmake" "${CMAKE_CURRENT_LIST_DIR}/NyXmlCheckPlugin.cmake"
    DESTINATION "${nyxml_package_dir}" COMPONENT plugin)

# gdb looks for it there, by the full name of the library.
install(FILES "${CMAKE_CURRENT_LIST_DIR}/nyXml-gdb.py" RENAME "libnyXml.so.${PROJECT_VERSION}-gdb.py"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load/${CMAKE_INSTALL_FULL_LIBDIR}" COMPONENT development)

install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation
    FILES_MATCHING PATTERN "*.md" PATTERN "samples" EXCLUDE)
install(DIRECTORY "${PROJECT_BINARY_DIR}/html" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation OPTIONAL)

# Relative to itself, as the CMake package is, so that an installed tree may be moved.
set(nyxml_pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}/${nyxml_pc_dir}" OUTPUT_VARIABLE nyxml_prefix_of_pc)
if(BUILD_SHARED_LIBS)
    set(nyxml_pc_system_libs "")
    set(nyxml_pc_expat "")
else()
    set(nyxml_pc_system_libs " -pthread -l${CMAKE_DL_LIBS}")
    set(nyxml_pc_expat " expat")
endif()
foreach(name nyXml nyXmlKit)
    if(name STREQUAL "nyXml" OR NYXML_BUILD_KIT)
        configure_file("${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
        set(component development)
        if(name STREQUAL "nyXmlKit")
            set(component kitDevelopment)
        endif()
        install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${nyxml_pc_dir}" COMPONENT ${component})
    endif()
endforeach()

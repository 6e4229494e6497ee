# Headers, library, CMake package and pkg-config file.

include(CMakePackageConfigHelpers)

set(nyxml_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nyXml")

install(TARGETS nyXml EXPORT nyXmlTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/nyXml" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    FILES_MATCHING PATTERN "*.h" PATTERN "platform/detail" EXCLUDE PATTERN "NyFromChars.h" EXCLUDE)

if(NYXML_BUILD_KIT)
    install(TARGETS nyXmlKit EXPORT nyXmlKitTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/nyXmlKit" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        FILES_MATCHING PATTERN "*.h" PATTERN "NyXmlFromChars.h" EXCLUDE)
    install(EXPORT nyXmlKitTargets NAMESPACE nyXml:: DESTINATION "${nyxml_package_dir}")
endif()

install(EXPORT nyXmlTargets NAMESPACE nyXml:: DESTINATION "${nyxml_package_dir}")
configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/nyXmlConfig.cmake.in" "${PROJECT_BINARY_DIR}/nyXmlConfig.cmake"
    INSTALL_DESTINATION "${nyxml_package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/nyXmlConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/nyXmlConfig.cmake"
    "${PROJECT_BINARY_DIR}/nyXmlConfigVersion.cmake"
    "${CMAKE_CURRENT_LIST_DIR}/NyXmlAddPlugin.cmake"
    DESTINATION "${nyxml_package_dir}")

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
        install(FILES "${PROJECT_BINARY_DIR}/${name}.pc" DESTINATION "${nyxml_pc_dir}")
    endif()
endforeach()

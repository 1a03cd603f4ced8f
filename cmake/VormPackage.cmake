# The package VormAssessments: the same targets vorm::assessments and vorm::evaluation from an
# installed prefix and from the build tree; and what pkg-config knows of the installed libraries.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(VORM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VormAssessments)

# Before 1.0 every minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VormAssessmentsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/VormAssessmentsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/VormAssessmentsConfig.cmake
    INSTALL_DESTINATION ${VORM_PACKAGE_DIR}
    NO_SET_AND_CHECK_MACRO)

set(VORM_PACKAGE_TARGETS vorm_assessments)
if(VORM_BUILD_EVALUATION)
    list(APPEND VORM_PACKAGE_TARGETS vorm_evaluation)
endif()
install(TARGETS ${VORM_PACKAGE_TARGETS} EXPORT VormAssessmentsTargets
        LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
        FILE_SET HEADERS COMPONENT development)
install(EXPORT VormAssessmentsTargets NAMESPACE vorm:: DESTINATION ${VORM_PACKAGE_DIR}
        COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/VormAssessmentsConfig.cmake
              ${PROJECT_BINARY_DIR}/VormAssessmentsConfigVersion.cmake
        DESTINATION ${VORM_PACKAGE_DIR} COMPONENT development)
export(EXPORT VormAssessmentsTargets NAMESPACE vorm::
       FILE ${PROJECT_BINARY_DIR}/VormAssessmentsTargets.cmake)

# For who builds without CMake. The prefix is found from where the file stands, as CMake does.
file(RELATIVE_PATH VORM_PREFIX_FROM_PKGCONFIG /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" VORM_PREFIX_FROM_PKGCONFIG ${VORM_PREFIX_FROM_PKGCONFIG})
foreach(target IN LISTS VORM_PACKAGE_TARGETS)
    string(REPLACE _ - name ${target})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
            COMPONENT development)
endforeach()

# The package VormAssessments: the same targets vorm::assessments and vorm::evaluation from an
# installed prefix and from the build tree.

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
install(TARGETS ${VORM_PACKAGE_TARGETS} EXPORT VormAssessmentsTargets FILE_SET HEADERS)
install(EXPORT VormAssessmentsTargets NAMESPACE vorm:: DESTINATION ${VORM_PACKAGE_DIR})
install(FILES ${PROJECT_BINARY_DIR}/VormAssessmentsConfig.cmake
              ${PROJECT_BINARY_DIR}/VormAssessmentsConfigVersion.cmake
        DESTINATION ${VORM_PACKAGE_DIR})
export(EXPORT VormAssessmentsTargets NAMESPACE vorm::
       FILE ${PROJECT_BINARY_DIR}/VormAssessmentsTargets.cmake)

# Installs the package that find_package(Zelkam COMPONENTS ...) finds. The libraries, each with its
# headers and its part of the package, are installed where they are added.
include(CMakePackageConfigHelpers)

configure_package_config_file(cmake/ZelkamConfig.cmake.in ZelkamConfig.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zelkam)
write_basic_package_version_file(ZelkamConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZelkamConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/ZelkamConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zelkam COMPONENT Package)

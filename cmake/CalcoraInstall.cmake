# What is installed: libraries (component libraries), headers and what builds against them
# (development). The program's folder adds its own (program). CalcoraPackages.cmake packs them.

include(CMakePackageConfigHelpers)

add_library(sdk INTERFACE)
target_compile_features(sdk INTERFACE cxx_std_20)
target_include_directories(sdk INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS tavrel_core sdk EXPORT quon_calcoraTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT libraries NAMELINK_COMPONENT development)
install(TARGETS quon_calcora tavrel_geometry
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries)
install(DIRECTORY frame/tavrel frame/geo frame/calcora DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT quon_calcoraTargets NAMESPACE quon_calcora::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quon_calcora COMPONENT development)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quon_calcora)
configure_package_config_file(cmake/quon_calcoraConfig.cmake.in
    ${CMAKE_BINARY_DIR}/quon_calcoraConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/quon_calcoraConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/quon_calcoraConfig.cmake
              ${CMAKE_BINARY_DIR}/quon_calcoraConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT development)

# Told from where the file lies, so that the installed tree may be moved.
file(RELATIVE_PATH PKGCONFIG_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" PKGCONFIG_TO_PREFIX ${PKGCONFIG_TO_PREFIX})
configure_file(cmake/quon_calcora.pc.in ${CMAKE_BINARY_DIR}/quon_calcora.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/quon_calcora.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
install(DIRECTORY examples/sdk/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libquon-calcora-dev/examples
        COMPONENT development)

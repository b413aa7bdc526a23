# The installable SDK: headers, the core library, the plugins, the package files.

include(CMakePackageConfigHelpers)

add_library(sdk INTERFACE)
target_compile_features(sdk INTERFACE cxx_std_20)
target_include_directories(sdk INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)

install(TARGETS tavrel_core sdk EXPORT quon_calcoraTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS quon_calcora tavrel_geometry LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY frame/tavrel frame/geo frame/calcora DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
install(EXPORT quon_calcoraTargets NAMESPACE quon_calcora::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quon_calcora)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quon_calcora)
configure_package_config_file(cmake/quon_calcoraConfig.cmake.in
    ${CMAKE_BINARY_DIR}/quon_calcoraConfig.cmake
    INSTALL_DESTINATION ${package_dir}
    PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/quon_calcoraConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/quon_calcoraConfig.cmake
              ${CMAKE_BINARY_DIR}/quon_calcoraConfigVersion.cmake
        DESTINATION ${package_dir})

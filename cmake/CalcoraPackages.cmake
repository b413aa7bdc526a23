# Debian packages: libquon-calcora, libquon-calcora-dev, calcora. scripts/package.sh makes them.

set(CALCORA_MAINTAINER "quon_calcora maintainers <root@localhost>" CACHE STRING
    "Name and address in the packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quon-calcora)
set(CPACK_PACKAGE_VENDOR "quon_calcora")
set(CPACK_PACKAGE_CONTACT ${CALCORA_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package begins with its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL libraries development program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME libquon-calcora)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SHLIBDEPS ON)
file(WRITE ${CMAKE_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/triggers)
set(CPACK_COMPONENT_LIBRARIES_DESCRIPTION
"plane geometry for surveying, mapping and drawing work
Closed loops from lines and arcs, curve and polyline functions, measures
and editing of paths, an R-tree and unit conversions, as a plugin with six
interfaces; with the core library and the geometry plugin it works with.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquon-calcora-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libquon-calcora (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"plane geometry for surveying, mapping and drawing work - development
Headers of the six interfaces, of the core library and of the geometry
plugin, examples, and what CMake and pkg-config need.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME calcora)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "libquon-calcora (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION
"closed loops and smooth curves from the lines of a drawing
Reads DXF drawings and finds the loops that their lines and arcs form, sets
out stations, measures, smooths, simplifies, squares and offsets lines;
writes DXF, SVG and JSON.")

include(CPack)

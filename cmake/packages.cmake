# Debian packages, made from the install rules: `make packages`. Dependencies on libraries come from
# the files themselves.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The Ravelinox maintainers <maintainers@ravelinox.invalid>")
set(CPACK_PACKAGE_VENDOR Ravelinox)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libravelinox${ravelinox_soversion})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Station engine for signal-box simulations: the library
 The shared library, the in-process server for hosts in other languages, and the program that shows
 the operator's telephone.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libravelinox-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Station engine for signal-box simulations: development
 Headers, interface description, CMake and pkg-config files.")
if(TARGET ravelinox_program)
  list(APPEND CPACK_COMPONENTS_ALL tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ravelinox)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION games)
  set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
  set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Station engine for signal-box simulations: the program
 Runs a day at a station, shows boards and trains, imports timetables; with a bundled station.")
endif()
if(TARGET ravelinox_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ravelinox)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.11), python3 (<< 3.12)")
  set(CPACK_COMPONENT_PYTHON_DEPENDS runtime)
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Station engine for signal-box simulations: the Python module
 The class cmdl1 for scripts, with type stubs.")
endif()
include(CPack)

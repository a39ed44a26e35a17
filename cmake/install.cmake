# What `cmake --install` lays down, in four parts that can be had one by one (and become Debian
# packages, see packages.cmake):
#   runtime      the shared library, the in-process server, the telephone's program
#   development  headers, interface description, and how another project finds the library:
#                find_package(Ravelinox) with the target ravelinox::ravelinox, and pkg-config
#   tools        the program with its bundled station and its manual pages
#   python       the Python package, by its own rules (python/)
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Ravelinox)

install(
  TARGETS ravelinox
  EXPORT RavelinoxTargets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  INCLUDES
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# Straight into the libraries' folder, from where the component finds the telephone's program.
install(TARGETS ravelinox_server LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime)
# Not for people to start: the component finds it in libexec, beside or above its own folder.
if(TARGET ravelinox-telephone)
  install(TARGETS ravelinox-telephone RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}
                                              COMPONENT runtime)
endif()

install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/include/ravelinox
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.hpp"
  PATTERN "*.h")
install(FILES ${PROJECT_SOURCE_DIR}/src/automation/Ravelinox.idl
        DESTINATION ${CMAKE_INSTALL_DATADIR}/ravelinox COMPONENT development)
install(
  EXPORT RavelinoxTargets
  NAMESPACE ravelinox::
  DESTINATION ${config_folder}
  COMPONENT development)
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/RavelinoxConfig.cmake.in ${PROJECT_BINARY_DIR}/RavelinoxConfig.cmake
  INSTALL_DESTINATION ${config_folder})
# Before 1.0 the interface may change with every minor version.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/RavelinoxConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/RavelinoxConfig.cmake
        ${PROJECT_BINARY_DIR}/RavelinoxConfigVersion.cmake
  DESTINATION ${config_folder}
  COMPONENT development)

install(FILES ${PROJECT_SOURCE_DIR}/docs/man/libravelinox.3
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT development)

# pkg-config finds its way from the file's own place, so that an installed tree can be moved.
file(RELATIVE_PATH ravelinox_pc_to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ravelinox_pc_to_prefix "${ravelinox_pc_to_prefix}")
set(ravelinox_pc_requires $<IF:$<BOOL:${RAVELINOX_BUILD_SHARED}>,Requires.private,Requires>)
configure_file(${CMAKE_CURRENT_LIST_DIR}/ravelinox.pc.in ${PROJECT_BINARY_DIR}/ravelinox.pc.gen @ONLY)
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/ravelinox.pc INPUT ${PROJECT_BINARY_DIR}/ravelinox.pc.gen)
install(FILES ${PROJECT_BINARY_DIR}/ravelinox.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

if(TARGET ravelinox_program)
  file(RELATIVE_PATH program_to_libraries /prefix/${CMAKE_INSTALL_BINDIR}
       /prefix/${CMAKE_INSTALL_LIBDIR})
  set_target_properties(ravelinox_program PROPERTIES INSTALL_RPATH "$ORIGIN/${program_to_libraries}")
  install(TARGETS ravelinox_program RUNTIME COMPONENT tools)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/ravelinox
          COMPONENT tools)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/man/ravelinox.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
          COMPONENT tools)
endif()

if(PROJECT_IS_TOP_LEVEL)
  include(${CMAKE_CURRENT_LIST_DIR}/packages.cmake)
endif()

# Installs what a wallpaper outside this tree is built with: headers, libraries, and the files by which CMake and
# pkg-config find them.
include(CMakePackageConfigHelpers)
set(NIVLO_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/nivlo)
set(NIVLO_PACKAGE_SOURCES ${PROJECT_SOURCE_DIR}/cmake/package)

configure_package_config_file(${NIVLO_PACKAGE_SOURCES}/nivlo-config.cmake.in ${PROJECT_BINARY_DIR}/nivlo-config.cmake
  INSTALL_DESTINATION ${NIVLO_PACKAGE_DIR} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/nivlo-config-version.cmake COMPATIBILITY SameMinorVersion)
file(RELATIVE_PATH NIVLO_PREFIX_FROM_PC /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${NIVLO_PACKAGE_SOURCES}/nivlo.pc.in ${PROJECT_BINARY_DIR}/nivlo.pc @ONLY)

install(DIRECTORY platform kit DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nivlo COMPONENT development FILES_MATCHING PATTERN *.hpp)
install(EXPORT nivlo NAMESPACE nivlo:: FILE nivlo-targets.cmake DESTINATION ${NIVLO_PACKAGE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/nivlo-config.cmake ${PROJECT_BINARY_DIR}/nivlo-config-version.cmake
  ${NIVLO_PACKAGE_SOURCES}/NivloWallpaper.cmake ${NIVLO_PACKAGE_SOURCES}/WallpaperInfo.plist.in
  DESTINATION ${NIVLO_PACKAGE_DIR} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/nivlo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

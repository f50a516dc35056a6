# What an installed game consists of: the program, its data, an entry for menus. Proving grounds and examples stay
# behind. The program finds its data from where it lies, so any prefix will do.
include(GNUInstallDirs)

set(programFolder ${CMAKE_INSTALL_BINDIR})
set(sharedFolder ${CMAKE_INSTALL_DATADIR})
install(TARGETS rustpike RUNTIME DESTINATION ${programFolder})
install(
  DIRECTORY ${CMAKE_BINARY_DIR}/data
  DESTINATION ${sharedFolder}/games/rustpike
  PATTERN proving EXCLUDE
  PATTERN examples EXCLUDE)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/rustpike.desktop DESTINATION ${sharedFolder}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/rustpike.svg DESTINATION ${sharedFolder}/icons/hicolor/scalable/apps)
install(FILES ${CMAKE_SOURCE_DIR}/README.md DESTINATION ${sharedFolder}/doc/rustpike)

set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY TRUE) # no tests, no tools

# tools/package.sh makes a package of it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME rustpike)
set(CPACK_PACKAGE_VENDOR "The Rustpike workshop")
set(CPACK_PACKAGE_CONTACT "The Rustpike workshop <workshop@rustpike.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Side-scrolling platform shooter drawn in flickering pencil")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS libgl1-mesa-dri)
include(CPack)

# What is installed beside the programs and the libraries: headers, and the
# files by which others find them. All paths in them are relative.
include(CMakePackageConfigHelpers)

set(QOR_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QorCli)

install(
  DIRECTORY platform/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qor
  COMPONENT devel
  FILES_MATCHING
  PATTERN *.h)
install(
  DIRECTORY cli/cmd_comp/common/src/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qor-cli
  COMPONENT devel
  FILES_MATCHING
  PATTERN *.h)
install(
  FILES cli/cmd_comp/matching/src/LineFilter.h
        cli/cmd_comp/matching/src/OwnStack.h
        cli/cmd_comp/matching/src/PatternError.h
        cli/cmd_comp/matching/src/TextSearch.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qor-cli
  COMPONENT devel)

install(
  EXPORT QorCli
  NAMESPACE QorCli::
  FILE QorCliTargets.cmake
  DESTINATION ${QOR_PACKAGE_DIR}
  COMPONENT devel)
configure_package_config_file(
  cmake/QorCliConfig.cmake.in QorCliConfig.cmake
  INSTALL_DESTINATION ${QOR_PACKAGE_DIR}
  PATH_VARS QOR_PLUGIN_DIR)
write_basic_package_version_file(QorCliConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES ${CMAKE_CURRENT_BINARY_DIR}/QorCliConfig.cmake
        ${CMAKE_CURRENT_BINARY_DIR}/QorCliConfigVersion.cmake
        cmake/QorCliPlugin.cmake cmake/QorCliPlugin.map
  DESTINATION ${QOR_PACKAGE_DIR}
  COMPONENT devel)

file(RELATIVE_PATH prefix_from_pkgconfig
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/qor-cli.pc.in qor-cli.pc @ONLY)
configure_file(cmake/qor-cli-matching.pc.in qor-cli-matching.pc @ONLY)
install(
  FILES ${CMAKE_CURRENT_BINARY_DIR}/qor-cli.pc
        ${CMAKE_CURRENT_BINARY_DIR}/qor-cli-matching.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT devel)

install(
  FILES docs/writing-a-pipe-command.md docs/embedding.md docs/reliability.md
        docs/matching.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT devel)
install(
  DIRECTORY examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT devel
  PATTERN build EXCLUDE)
# Debian's packages have a folder of documents each.
if(NOT QOR_DEBIAN_PACKAGES)
  install(
    FILES docs/filter.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT plugin)
  install(
    FILES docs/text.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT text)
  install(
    FILES LICENSE CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT devel)
endif()

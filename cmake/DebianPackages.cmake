# Debian packages by CPack, one for each component of the installation. To be
# included last, with what the preset "package" sets.
set(QOR_MAINTAINER "libcli_pipe maintainers <maintainers@libcli-pipe.invalid>"
    CACHE STRING "Who answers for the packages: NAME <ADDRESS>")
set(debian_release 1)
set(debian_version ${PROJECT_VERSION}-${debian_release})

set(package_common libqor-common${PROJECT_VERSION_MAJOR})
set(package_plugin libcli-pipe)
set(package_text libcli-text)
set(package_engine qorcli)
set(package_devel libcli-pipe-dev)

# The runtime is packaged where it is made here, the engine where it is built.
set(components plugin text devel)
if(TARGET qor_common)
  list(APPEND components common)
  set(needs_common "${package_common} (>= ${PROJECT_VERSION})")
  set(common_folder ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
else()
  get_filename_component(common_folder ${QOR_COMMON_LIBRARY} DIRECTORY)
endif()
if(TARGET qorcli)
  list(APPEND components engine)
endif()

# The change log's first heading: ## VERSION - YEAR-MONTH-DAY
file(STRINGS CHANGELOG.md release REGEX "^## " LIMIT_COUNT 1)
if(NOT release MATCHES "^## ([0-9.]+) - ([0-9-]+)$"
   OR NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md begins with '${release}', "
                      "not with the release of ${PROJECT_VERSION}")
endif()
execute_process(
  COMMAND date --utc --rfc-email --date ${CMAKE_MATCH_2}
  OUTPUT_VARIABLE release_date
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

set(documents ${CMAKE_CURRENT_BINARY_DIR}/debian)
configure_file(cmake/debian/changelog.in ${documents}/changelog.Debian @ONLY)
configure_file(CHANGELOG.md ${documents}/changelog COPYONLY)
foreach(component IN LISTS components)
  set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package_${component}})
  install(
    FILES cmake/debian/copyright
    DESTINATION ${folder}
    COMPONENT ${component})
  qor_install_compressed(${documents}/changelog.Debian ${folder} ${component})
  qor_install_compressed(${documents}/changelog ${folder} ${component})
endforeach()
install(
  FILES docs/filter.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_plugin}
  COMPONENT plugin)
install(
  FILES docs/text.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_text}
  COMPONENT text)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libcli-pipe)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package has a summary of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT ${QOR_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${debian_release})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# qor_describe_package(<component> <section> <summary> <text>)
macro(qor_describe_package component section summary text)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package_${component}})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SOURCE libcli-pipe)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${text}")
endmacro()

qor_describe_package(
  common libs "common runtime of a management framework, for development"
  "A stand-in for the framework's library of logging, locks and status codes,
with which plug-ins are developed and tried without the framework.")
qor_describe_package(
  plugin net "output filter of a network-management command line"
  "A plug-in that a command-line engine loads. It offers the pipe command
filter, which keeps the lines of a command's output that match a regular
expression, with lines of context, and completes and explains it.")
qor_describe_package(
  text net "text commands of a network-management command line"
  "A plug-in that a command-line engine loads. It offers the pipe commands count,
head, tail, begin, unique and number, which work on the lines of a command's
output, and completes and explains them.")
qor_describe_package(
  engine net "command line whose output can be piped through plug-in commands"
  "A reference engine, interactive and batch, that loads plug-ins with pipe
commands and shows, completes and runs them.")
qor_describe_package(
  devel libdevel "development files for plug-ins with pipe commands"
  "The command tree framework and the matching core as static libraries, their
headers and those of the management framework's interfaces, a CMake package,
pkg-config files, guides and an example.")

# What packages of programs that are linked to the runtime depend on, and that
# the loader's cache is made anew.
file(WRITE ${documents}/shlibs "libqor_common ${PROJECT_VERSION_MAJOR} \
${package_common} (>= ${PROJECT_VERSION})\n")
file(WRITE ${documents}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_COMMON_PACKAGE_CONTROL_EXTRA ${documents}/shlibs
                                              ${documents}/triggers)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${common_folder})
if(CMAKE_CROSSCOMPILING)
  # dpkg-shlibdeps finds the libraries of that architecture, and their packages.
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${QOR_ARCHITECTURE})
  list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
       ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}
       ${CMAKE_SYSROOT}/lib/${CMAKE_LIBRARY_ARCHITECTURE})
  set(CPACK_PROJECT_CONFIG_FILE ${documents}/foreign.cmake)
  file(WRITE ${CPACK_PROJECT_CONFIG_FILE}
       "set(ENV{DEB_HOST_ARCH} ${QOR_ARCHITECTURE})
set(ENV{DPKG_ADMINDIR} ${CMAKE_SYSROOT}/var/lib/dpkg)\n")
endif()
foreach(component COMMON PLUGIN TEXT ENGINE)
  set(CPACK_DEBIAN_${component}_PACKAGE_SHLIBDEPS ON)
endforeach()
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS ${needs_common})
set(CPACK_DEBIAN_TEXT_PACKAGE_DEPENDS ${needs_common})
# The line editor is loaded, not linked.
set(CPACK_DEBIAN_ENGINE_PACKAGE_DEPENDS
    "${package_plugin}, ${package_text}, libedit2")
set(CPACK_DEBIAN_DEVEL_PACKAGE_DEPENDS
    "libpoco-dev, libpcre2-dev, libre2-dev")
if(TARGET qor_common)
  string(PREPEND CPACK_DEBIAN_ENGINE_PACKAGE_DEPENDS "${needs_common}, ")
  string(PREPEND CPACK_DEBIAN_DEVEL_PACKAGE_DEPENDS
         "${package_common} (= ${debian_version}), ")
endif()
set(CPACK_DEBIAN_DEVEL_PACKAGE_SUGGESTS ${package_plugin})
if(TARGET qorcli)
  string(APPEND CPACK_DEBIAN_DEVEL_PACKAGE_SUGGESTS ", ${package_engine}")
endif()

include(CPack)

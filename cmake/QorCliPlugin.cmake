# qor_cli_add_plugin(<target> <sources...>): a plug-in over the command tree
# framework, lib<target>.so. One of the sources defines what LibraryEntry.h
# declares.
#
# The plug-in exports its two entry points, keeps every other name to itself and
# refuses to be linked with a name left open, so that loading it with RTLD_LOCAL
# works and closing it unloads it.
function(qor_cli_add_plugin target)
  set(map ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QorCliPlugin.map)
  add_library(${target} MODULE ${ARGN})
  target_link_libraries(${target} PRIVATE QorCli::tree)
  target_link_options(${target} PRIVATE -Wl,--version-script=${map}
                      -Wl,--as-needed)
  set_target_properties(
    ${target}
    PROPERTIES CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               LINK_DEPENDS ${map})
  # A sanitizer's names are the loading program's.
  if(NOT QOR_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

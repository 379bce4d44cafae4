# qor_set_run_path(<target> <folder...>): looks for the common runtime in these
# folders, relative to that of the target, in the build tree or installed.
#
# The same run path serves both. Where CMake changes it as it installs, it ends
# the one of the build tree in a colon, and with that in the current folder.
function(qor_set_run_path target)
  list(TRANSFORM ARGN PREPEND "$ORIGIN/" OUTPUT_VARIABLE folders)
  list(TRANSFORM folders REPLACE "/$" "")
  list(REMOVE_DUPLICATES folders)
  set_target_properties(
    ${target}
    PROPERTIES INSTALL_RPATH "${folders}"
               INSTALL_RPATH_USE_LINK_PATH ON
               BUILD_WITH_INSTALL_RPATH ON)
endfunction()

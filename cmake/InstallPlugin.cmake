# qor_install_plugin(<target> <component>): installs a plug-in, which looks for
# the common runtime beside itself in the build tree, and where it is installed.
function(qor_install_plugin target component)
  file(RELATIVE_PATH runtime_folder
       ${CMAKE_INSTALL_PREFIX}/${QOR_PLUGIN_DIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  qor_set_run_path(${target} "" ${runtime_folder})
  install(TARGETS ${target} LIBRARY DESTINATION ${QOR_PLUGIN_DIR}
                                    COMPONENT ${component})
endfunction()

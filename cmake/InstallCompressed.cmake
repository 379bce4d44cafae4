# qor_install_compressed(<file> <folder> <component>): installs a document, in a
# Debian package compressed, as Debian wants it.
function(qor_install_compressed file folder component)
  if(QOR_DEBIAN_PACKAGES)
    get_filename_component(name ${file} NAME)
    set(copy ${CMAKE_CURRENT_BINARY_DIR}/compressed/${name})
    configure_file(${file} ${copy} COPYONLY)
    execute_process(COMMAND gzip --force --keep --best --no-name ${copy}
                            COMMAND_ERROR_IS_FATAL ANY)
    set(file ${copy}.gz)
  endif()
  install(
    FILES ${file}
    DESTINATION ${folder}
    COMPONENT ${component})
endfunction()

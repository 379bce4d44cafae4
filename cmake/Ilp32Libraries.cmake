# Debian has the 32-bit libraries' run-time packages, and the headers are those
# of the 64-bit development packages. So the targets that the development
# packages would define are defined here, over the run-time libraries.
set(ilp32_folder /usr/lib/i386-linux-gnu)

function(qor_ilp32_library target pattern)
  file(GLOB candidates ${ilp32_folder}/${pattern})
  if(NOT candidates)
    message(FATAL_ERROR "no ${pattern} in ${ilp32_folder}")
  endif()
  list(GET candidates 0 library)
  add_library(${target} SHARED IMPORTED GLOBAL)
  set_target_properties(${target} PROPERTIES IMPORTED_LOCATION ${library})
endfunction()

qor_ilp32_library(Poco::Foundation libPocoFoundation.so.*)
set_target_properties(
  Poco::Foundation PROPERTIES INTERFACE_COMPILE_DEFINITIONS
                              "POCO_UNBUNDLED;POCO_OS_FAMILY_UNIX")

qor_ilp32_library(PkgConfig::LIBEDIT libedit.so.2)

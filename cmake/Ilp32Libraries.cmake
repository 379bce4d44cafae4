# The 32-bit libraries are those that script/setup-foreign unpacks, and the
# headers are those of the 64-bit development packages. So the targets that the
# development packages would define are defined here, over the run-time libraries.
set(ilp32_root ${CMAKE_SOURCE_DIR}/build/foreign/i386)
set(ilp32_folders ${ilp32_root}/usr/lib/i386-linux-gnu
                  ${ilp32_root}/lib/i386-linux-gnu)

function(qor_ilp32_library target pattern)
  list(TRANSFORM ilp32_folders APPEND /${pattern} OUTPUT_VARIABLE patterns)
  file(GLOB candidates ${patterns})
  if(NOT candidates)
    message(FATAL_ERROR "no ${pattern} below ${ilp32_root}; "
                        "script/setup-foreign i386 unpacks it")
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
qor_ilp32_library(PkgConfig::PCRE2 libpcre2-8.so.0)
qor_ilp32_library(PkgConfig::RE2 libre2.so.*)

# A DT_RPATH, other than a DT_RUNPATH, also serves what the libraries need.
add_link_options(-Wl,--disable-new-dtags)
foreach(folder IN LISTS ilp32_folders)
  add_link_options(-Wl,-rpath,${folder})
endforeach()

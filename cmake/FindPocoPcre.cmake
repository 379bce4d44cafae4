# Finds out which PCRE library the installed Poco is built on, and finds that.
#
# Sets PocoPcre_VARIANT to "Pcre" or "Pcre2" and defines the target Poco::Pcre.
execute_process(
  COMMAND ${CMAKE_READELF} -d ${PocoPcre_POCO_LIBRARY}
  OUTPUT_VARIABLE needed
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cannot read ${PocoPcre_POCO_LIBRARY}")
endif()
if(needed MATCHES "\\[(libpcre2-8\\.so[.0-9]*)\\]")
  set(PocoPcre_VARIANT Pcre2)
  set(header pcre2.h)
elseif(needed MATCHES "\\[(libpcre\\.so[.0-9]*)\\]")
  set(PocoPcre_VARIANT Pcre)
  set(header pcre.h)
endif()
# The very file that Poco loads, whether or not there is a development link.
set(library_name ${CMAKE_MATCH_1})
get_filename_component(library_folder ${PocoPcre_POCO_LIBRARY} DIRECTORY)
find_library(PocoPcre_LIBRARY NAMES ${library_name} HINTS ${library_folder})
find_path(PocoPcre_INCLUDE_DIR ${header})

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
  PocoPcre REQUIRED_VARS PocoPcre_LIBRARY PocoPcre_INCLUDE_DIR PocoPcre_VARIANT)

if(PocoPcre_FOUND AND NOT TARGET Poco::Pcre)
  add_library(Poco::Pcre UNKNOWN IMPORTED)
  set_target_properties(
    Poco::Pcre PROPERTIES IMPORTED_LOCATION ${PocoPcre_LIBRARY}
                          INTERFACE_INCLUDE_DIRECTORIES ${PocoPcre_INCLUDE_DIR})
endif()
mark_as_advanced(PocoPcre_LIBRARY PocoPcre_INCLUDE_DIR)

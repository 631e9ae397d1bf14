# Finds minizip (Debian package libminizip-dev): target Minizip::Minizip.
find_path(Minizip_INCLUDE_DIR minizip/unzip.h)
find_library(Minizip_LIBRARY minizip)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Minizip REQUIRED_VARS Minizip_LIBRARY Minizip_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "Install the Debian package libminizip-dev.")
if(Minizip_FOUND AND NOT TARGET Minizip::Minizip)
  add_library(Minizip::Minizip UNKNOWN IMPORTED GLOBAL)
  set_target_properties(Minizip::Minizip PROPERTIES
    IMPORTED_LOCATION ${Minizip_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${Minizip_INCLUDE_DIR})
endif()
mark_as_advanced(Minizip_INCLUDE_DIR Minizip_LIBRARY)

# Finds libzip (Debian package libzip-dev): target LibZip::LibZip. The library's own package file asks for programs of
# other packages.
find_path(LibZip_INCLUDE_DIR zip.h)
find_library(LibZip_LIBRARY zip)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(LibZip REQUIRED_VARS LibZip_LIBRARY LibZip_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "Install the Debian package libzip-dev.")
if(LibZip_FOUND AND NOT TARGET LibZip::LibZip)
  add_library(LibZip::LibZip UNKNOWN IMPORTED GLOBAL)
  set_target_properties(LibZip::LibZip PROPERTIES
    IMPORTED_LOCATION ${LibZip_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${LibZip_INCLUDE_DIR})
endif()
mark_as_advanced(LibZip_INCLUDE_DIR LibZip_LIBRARY)

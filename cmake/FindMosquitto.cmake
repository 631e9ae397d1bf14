# Finds the header of mosquitto's client library (Debian package libmosquitto-dev): target Mosquitto::Headers. The library
# is loaded at run time.
find_path(Mosquitto_INCLUDE_DIR mosquitto.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Mosquitto REQUIRED_VARS Mosquitto_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "Install the Debian package libmosquitto-dev.")
if(Mosquitto_FOUND AND NOT TARGET Mosquitto::Headers)
  add_library(Mosquitto::Headers INTERFACE IMPORTED GLOBAL)
  set_target_properties(Mosquitto::Headers PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${Mosquitto_INCLUDE_DIR})
endif()
mark_as_advanced(Mosquitto_INCLUDE_DIR)

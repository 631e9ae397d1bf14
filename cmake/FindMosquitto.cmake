# Finds the client library of mosquitto (Debian package libmosquitto-dev): target Mosquitto::Mosquitto.
find_path(Mosquitto_INCLUDE_DIR mosquitto.h)
find_library(Mosquitto_LIBRARY mosquitto)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Mosquitto REQUIRED_VARS Mosquitto_LIBRARY Mosquitto_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "Install the Debian package libmosquitto-dev.")
if(Mosquitto_FOUND AND NOT TARGET Mosquitto::Mosquitto)
  add_library(Mosquitto::Mosquitto UNKNOWN IMPORTED GLOBAL)
  set_target_properties(Mosquitto::Mosquitto PROPERTIES
    IMPORTED_LOCATION ${Mosquitto_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${Mosquitto_INCLUDE_DIR})
endif()
mark_as_advanced(Mosquitto_INCLUDE_DIR Mosquitto_LIBRARY)

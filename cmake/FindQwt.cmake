# Finds Qwt for Qt 5, which has no CMake package file, and defines the target Qwt::Qwt.
find_path(Qwt_INCLUDE_DIR qwt_plot.h PATH_SUFFIXES qwt qwt-qt5 qt5/qwt)
find_library(Qwt_LIBRARY NAMES qwt-qt5)
if(Qwt_INCLUDE_DIR AND EXISTS ${Qwt_INCLUDE_DIR}/qwt_global.h)
  file(STRINGS ${Qwt_INCLUDE_DIR}/qwt_global.h line REGEX "define QWT_VERSION_STR")
  string(REGEX REPLACE ".*\"([0-9.]+)\".*" "\\1" Qwt_VERSION "${line}")
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt
  REQUIRED_VARS Qwt_LIBRARY Qwt_INCLUDE_DIR VERSION_VAR Qwt_VERSION)
if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
  add_library(Qwt::Qwt UNKNOWN IMPORTED GLOBAL)
  set_target_properties(Qwt::Qwt PROPERTIES
    IMPORTED_LOCATION ${Qwt_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${Qwt_INCLUDE_DIR}
    INTERFACE_LINK_LIBRARIES Qt5::Widgets)
endif()

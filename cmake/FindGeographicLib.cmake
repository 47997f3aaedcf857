# Defines GeographicLib::GeographicLib, as the library's own package does where a system ships that. Also installed:
# whoever links the static library needs the same.
find_path(ORLAN_GEOGRAPHICLIB_INCLUDE GeographicLib/Geodesic.hpp)
find_library(ORLAN_GEOGRAPHICLIB_LIBRARY NAMES GeographicLib Geographic)
mark_as_advanced(ORLAN_GEOGRAPHICLIB_INCLUDE ORLAN_GEOGRAPHICLIB_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GeographicLib REQUIRED_VARS ORLAN_GEOGRAPHICLIB_LIBRARY ORLAN_GEOGRAPHICLIB_INCLUDE)
if(GeographicLib_FOUND AND NOT TARGET GeographicLib::GeographicLib)
  add_library(GeographicLib::GeographicLib UNKNOWN IMPORTED)
  set_target_properties(GeographicLib::GeographicLib PROPERTIES
                        IMPORTED_LOCATION "${ORLAN_GEOGRAPHICLIB_LIBRARY}"
                        INTERFACE_INCLUDE_DIRECTORIES "${ORLAN_GEOGRAPHICLIB_INCLUDE}")
endif()

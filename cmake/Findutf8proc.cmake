# Defines utf8proc::utf8proc. Also installed: whoever links the static library needs the same.
find_path(ORLAN_UTF8PROC_INCLUDE utf8proc.h)
find_library(ORLAN_UTF8PROC_LIBRARY utf8proc)
mark_as_advanced(ORLAN_UTF8PROC_INCLUDE ORLAN_UTF8PROC_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(utf8proc REQUIRED_VARS ORLAN_UTF8PROC_LIBRARY ORLAN_UTF8PROC_INCLUDE)
if(utf8proc_FOUND AND NOT TARGET utf8proc::utf8proc)
  add_library(utf8proc::utf8proc UNKNOWN IMPORTED)
  set_target_properties(utf8proc::utf8proc PROPERTIES IMPORTED_LOCATION "${ORLAN_UTF8PROC_LIBRARY}"
                                                      INTERFACE_INCLUDE_DIRECTORIES "${ORLAN_UTF8PROC_INCLUDE}")
endif()

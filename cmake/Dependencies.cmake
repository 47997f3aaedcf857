# What the core is built with; none of it shows in a public header.
find_package(fmt REQUIRED)
find_package(simdjson REQUIRED)
find_package(Threads REQUIRED)
list(APPEND CMAKE_MODULE_PATH /usr/share/cmake/geographiclib)
find_package(GeographicLib REQUIRED)
find_path(ORLAN_UTF8PROC_INCLUDE utf8proc.h REQUIRED)
find_library(ORLAN_UTF8PROC_LIBRARY utf8proc REQUIRED)
add_library(orlan_core_dependencies INTERFACE)
target_link_libraries(orlan_core_dependencies INTERFACE fmt::fmt simdjson::simdjson ${GeographicLib_LIBRARIES}
                                                        ${ORLAN_UTF8PROC_LIBRARY} Threads::Threads)

# Bottom to top.
set(ORLAN_FLOORS base platform logging campaigns surveys backend geofence notifications sdk)

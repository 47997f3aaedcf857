# orlan_need(TARGET PACKAGE): finds PACKAGE, unless the project that embeds this one brought TARGET already. Whoever links
# our static libraries links these too, in whatever folder, hence global.
macro(orlan_need target package)
  if(NOT TARGET ${target})
    find_package(${package} REQUIRED)
    set_target_properties(${target} PROPERTIES IMPORTED_GLOBAL TRUE)
  endif()
endmacro()

# What the core is built with; none of it shows in a public header. cmake/package/OrlanConfig.cmake.in and Install.cmake
# name them again.
list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake)
orlan_need(fmt::fmt fmt)
orlan_need(simdjson::simdjson simdjson)
orlan_need(Threads::Threads Threads)
orlan_need(GeographicLib::GeographicLib GeographicLib)
orlan_need(utf8proc::utf8proc utf8proc)
add_library(orlan_core_dependencies INTERFACE)
target_link_libraries(orlan_core_dependencies INTERFACE fmt::fmt simdjson::simdjson GeographicLib::GeographicLib
                                                        utf8proc::utf8proc Threads::Threads)

# Bottom to top.
set(ORLAN_FLOORS base platform logging campaigns surveys backend geofence notifications sdk c)

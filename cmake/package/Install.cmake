# What `cmake --install` lays down. Components: development (headers, CMake package, pkg-config files), static, shared,
# program.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/Orlan)
set(here ${PROJECT_SOURCE_DIR}/cmake/package)

set(libraries orlan)
if(ORLAN_PHONES)
  list(APPEND libraries orlan_simulated)
endif()
if(ORLAN_LINUX)
  list(APPEND libraries orlan_linux)
endif()
list(TRANSFORM libraries APPEND _shared OUTPUT_VARIABLE shared)
install(TARGETS ${libraries} EXPORT OrlanStatic COMPONENT static)
install(TARGETS ${shared} EXPORT OrlanShared COMPONENT shared)
install(EXPORT OrlanStatic NAMESPACE Orlan:: DESTINATION ${package} COMPONENT static)
install(EXPORT OrlanShared NAMESPACE Orlan:: DESTINATION ${package} COMPONENT shared)

# The headers that a host can reach from these.
set(roots orlan/orlan.hpp)
foreach(root orlan/c/orlan.h)
  if(EXISTS ${PROJECT_SOURCE_DIR}/${root})
    list(APPEND roots ${root})
  endif()
endforeach()
if(ORLAN_PHONES)
  list(APPEND roots phones/simulated/SimulatedPhone.hpp phones/simulated/Recorder.hpp)
endif()
if(ORLAN_LINUX)
  list(APPEND roots phones/linux/LinuxPhone.hpp phones/linux/SignalStop.hpp)
endif()
install(CODE "set(source \"${PROJECT_SOURCE_DIR}\")\nset(roots \"${roots}\")
set(destination \"${CMAKE_INSTALL_INCLUDEDIR}\")" COMPONENT development)
install(SCRIPT ${here}/InstallHeaders.cmake COMPONENT development)

if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(promise SameMinorVersion)
else()
  set(promise SameMajorVersion)
endif()
configure_package_config_file(${here}/OrlanConfig.cmake.in ${PROJECT_BINARY_DIR}/OrlanConfig.cmake
                              INSTALL_DESTINATION ${package} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrlanConfigVersion.cmake COMPATIBILITY ${promise})
install(FILES ${PROJECT_BINARY_DIR}/OrlanConfig.cmake ${PROJECT_BINARY_DIR}/OrlanConfigVersion.cmake
              ${PROJECT_SOURCE_DIR}/cmake/Findutf8proc.cmake ${PROJECT_SOURCE_DIR}/cmake/FindGeographicLib.cmake
        DESTINATION ${package} COMPONENT development)

# What a static library needs stands under Libs.private and not under Requires.private, so that whoever links the shared
# one needs none of it.
set(standard ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
list(FILTER standard INCLUDE REGEX "c\\+\\+")
list(TRANSFORM standard PREPEND -l)
string(REPLACE ";" " " standard "${standard} -lpthread -lm")
file(RELATIVE_PATH prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
function(orlan_pkgconfig file description requires private)
  configure_file(${here}/orlan.pc.in ${PROJECT_BINARY_DIR}/${file}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${file}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
orlan_pkgconfig(orlan "${PROJECT_DESCRIPTION}" "" "-lfmt -lsimdjson -lGeographicLib -lutf8proc")
if(ORLAN_PHONES)
  orlan_pkgconfig(orlan-simulated "A phone in memory and virtual time for Orlan" "orlan = ${PROJECT_VERSION}" "")
endif()
if(ORLAN_LINUX)
  orlan_pkgconfig(orlan-linux "The Linux phone for Orlan" "orlan = ${PROJECT_VERSION}"
                  "-lcurl -lsqlite3 -lplist-2.0 -lpugixml -lfmt")
endif()

if(ORLAN_TOOLS)
  install(TARGETS orlan_program COMPONENT program)
endif()

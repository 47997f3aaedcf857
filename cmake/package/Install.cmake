# What `cmake --install` lays down. Components: development (headers, CMake package, pkg-config files), static, shared,
# program.
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
if("c" IN_LIST ORLAN_FLOORS)
  list(APPEND roots orlan/c/orlan.h)
endif()
if(ORLAN_PHONES)
  list(APPEND roots phones/simulated/SimulatedPhone.hpp phones/simulated/Recorder.hpp)
endif()
if(ORLAN_LINUX)
  file(GLOB ready CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/phones/c/*.h)
  list(APPEND roots phones/linux/LinuxPhone.hpp phones/linux/SignalStop.hpp ${ready})
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

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/docs/compatibility.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

# What a static library needs stands under Libs.private and not under Requires.private, so that whoever links the shared
# one needs none of it.
set(standard ${CMAKE_CXX_IMPLICIT_LINK_LIBRARIES})
list(FILTER standard INCLUDE REGEX "c\\+\\+")
list(TRANSFORM standard PREPEND -l)
string(REPLACE ";" " " standard "${standard} -lpthread -lm")
file(RELATIVE_PATH prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" prefix ${prefix})
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

# The program's help is all there is: completions ask it, help2man makes manual pages of it. One for another machine
# cannot be asked here.
if(ORLAN_TOOLS)
  install(TARGETS orlan_program COMPONENT program)
  install(FILES ${here}/completions/orlan.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
          COMPONENT program)
  install(FILES ${here}/completions/_orlan DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT program)
  install(FILES ${here}/completions/orlan.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME orlan COMPONENT program)
  find_program(HELP2MAN help2man)
endif()
if(HELP2MAN AND NOT CMAKE_CROSSCOMPILING)
  set(pages)
  function(orlan_page name summary)  # and what stands in front of --help
    set(page ${PROJECT_BINARY_DIR}/pages/${name})
    add_custom_command(OUTPUT ${page}.1 DEPENDS orlan_program VERBATIM
      COMMAND ${CMAKE_COMMAND} -E create_symlink $<TARGET_FILE:orlan_program> ${page}
      COMMAND ${HELP2MAN} --no-info --name=${summary} "--help-option=${ARGN} --help" --version-string=${PROJECT_VERSION}
              --output=${page}.1 ${page})
    install(FILES ${page}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
    set(pages ${pages} ${page}.1 PARENT_SCOPE)
  endfunction()
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/pages)
  orlan_page(orlan "the right local notification at the right door")
  orlan_page(orlan-simulate "play a scenario on a simulated phone" simulate)
  orlan_page(orlan-run "be a host application in a terminal" run)
  orlan_page(orlan-backend "serve a development backend" backend)
  add_custom_target(orlan_pages ALL DEPENDS ${pages})
elseif(ORLAN_TOOLS)
  message(STATUS "No manual pages are made: they need help2man, and a program that runs here")
endif()

# One folder, one object library; orlan_floor() and orlan_suite() keep every CMakeLists.txt to one line a room.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# The shared libraries export what their sources define (exports.map); what is inline is in every program anyway.
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(ORLAN_CCACHE ccache)
if(ORLAN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Build directories share what one of them compiled, wherever they lie: the consumers in tests/package cost seconds.
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_NOHASHDIR=1 CCACHE_BASEDIR= ${ORLAN_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

add_library(orlan_flags INTERFACE)
target_compile_features(orlan_flags INTERFACE cxx_std_20)
target_compile_options(orlan_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow
                                             $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> -Wconversion
                                             -Wno-sign-conversion -Wno-missing-field-initializers)
# Compilers for Arm fuse `a * b + c` into one rounding by default, which moves points across the edges of polygons: the
# answers are to be the same bits on every machine.
target_compile_options(orlan_flags INTERFACE -ffp-contract=off)
# g++ 12 takes the string literal in `"text" + std::string` for one that overlaps itself once it optimises.
target_compile_options(orlan_flags INTERFACE
                       "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-restrict>")
if(ORLAN_WERROR)
  target_compile_options(orlan_flags INTERFACE -Werror)
endif()
if(ORLAN_SANITIZE)
  # Applied to the whole tree: a program half instrumented reports faults that are none.
  add_compile_options(-fsanitize=${ORLAN_SANITIZE} -fno-omit-frame-pointer -g1 -O1)
  add_link_options(-fsanitize=${ORLAN_SANITIZE})
  if(ORLAN_SANITIZE MATCHES "undefined")
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()

# orlan_room(TARGET FOLDER): an object library of every source in FOLDER (a new file needs no edit here).
function(orlan_room target folder)
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  add_library(${target} OBJECT ${sources} ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${target} PRIVATE orlan_flags)
endfunction()

# orlan_library(NAME ROOMS room... NEEDS library...): the static library NAME and, of the same objects, the shared library
# NAME_shared. Orlan::NAME without its "orlan_" is the kind that BUILD_SHARED_LIBS asks for. NEEDS stay private.
function(orlan_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "ROOMS;NEEDS")
  string(REGEX REPLACE "^orlan_" "" short ${name})
  string(REPLACE "_" "-" file ${name})
  add_library(${name} STATIC)
  add_library(${name}_shared SHARED)
  foreach(kind ${name} ${name}_shared)
    foreach(room IN LISTS arg_ROOMS)
      target_sources(${kind} PRIVATE $<TARGET_OBJECTS:${room}>)
    endforeach()
    target_include_directories(${kind} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_compile_features(${kind} PUBLIC cxx_std_20)
    target_link_libraries(${kind} PRIVATE ${arg_NEEDS})
    set_target_properties(${kind} PROPERTIES OUTPUT_NAME ${file} EXPORT_NAME ${short} LINKER_LANGUAGE CXX
                                             EXCLUDE_FROM_ALL $<NOT:$<BOOL:${ORLAN_INSTALL}>>)
  endforeach()
  if(NOT name STREQUAL "orlan")
    target_link_libraries(${name} PUBLIC orlan)
    target_link_libraries(${name}_shared PUBLIC orlan_shared)
  endif()
  set_target_properties(${name}_shared PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${ORLAN_SOVERSION}
                                                  LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/package/exports.map)
  if(CMAKE_SYSTEM_NAME MATCHES "Linux|Android|BSD")
    target_link_options(${name}_shared PRIVATE
                        LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/package/exports.map LINKER:--exclude-libs,ALL)
    if(NOT ORLAN_SANITIZE)
      target_link_options(${name}_shared PRIVATE LINKER:--no-undefined)
    endif()
  endif()
  if(BUILD_SHARED_LIBS)
    add_library(Orlan::${short} ALIAS ${name}_shared)
  else()
    add_library(Orlan::${short} ALIAS ${name})
  endif()
endfunction()

# One folder, one object library; orlan_floor() and orlan_suite() keep every CMakeLists.txt to one line a room.

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
target_compile_options(orlan_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wconversion
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

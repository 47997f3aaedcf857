# Debian's cross compiler for 64-bit Arm, with the libraries that scripts/arm-libraries unpacks; programs that are built
# run under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

get_filename_component(ORLAN_ARM_ROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/arm-root ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH ${ORLAN_ARM_ROOT} /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What the libraries need in turn lies beside them, too.
set(libraries ${ORLAN_ARM_ROOT}/usr/lib/aarch64-linux-gnu)
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,-rpath-link,${libraries})
set(CMAKE_SHARED_LINKER_FLAGS_INIT -Wl,-rpath-link,${libraries})
set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/pkgconfig:${ORLAN_ARM_ROOT}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${ORLAN_ARM_ROOT})

find_program(ORLAN_QEMU qemu-aarch64)
if(ORLAN_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${ORLAN_QEMU} -L /usr/aarch64-linux-gnu -E LD_LIBRARY_PATH=${libraries})
endif()

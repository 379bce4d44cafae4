# A tool chain: builds for the Debian architecture QOR_ARCHITECTURE with the cross
# compiler and the libraries that script/setup-foreign unpacks.
set(triplet_i386 i686-linux-gnu)
set(triplet_armhf arm-linux-gnueabihf)
set(triplet_arm64 aarch64-linux-gnu)
set(triplet_s390x s390x-linux-gnu)
set(triplet ${triplet_${QOR_ARCHITECTURE}})
string(REPLACE i686 i386 multiarch ${triplet})
set(root ${CMAKE_CURRENT_LIST_DIR}/../build/foreign/${QOR_ARCHITECTURE})
file(REAL_PATH ${root} root)
if(NOT EXISTS ${root}/unpacked)
  message(FATAL_ERROR "${root} is missing; "
                      "script/setup-foreign ${QOR_ARCHITECTURE} makes it")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QOR_ARCHITECTURE)

set(CMAKE_SYSTEM_NAME Linux)
string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR ${triplet})
set(CMAKE_CXX_COMPILER ${root}/usr/bin/${triplet}-g++)
# The assembler and the linker are installed. On Arm, g++ notes wherever version 7
# changed how arguments are passed.
set(CMAKE_CXX_FLAGS_INIT "-B/usr/${triplet}/bin -Wno-psabi")
set(CMAKE_SYSROOT ${root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(ENV{PKG_CONFIG_SYSROOT_DIR} ${root})
set(ENV{PKG_CONFIG_LIBDIR}
    ${root}/usr/lib/${multiarch}/pkgconfig:${root}/usr/share/pkgconfig)

set(CMAKE_INSTALL_LIBDIR lib/${multiarch} CACHE PATH "Debian's for libraries")

if(QOR_ARCHITECTURE STREQUAL "i386")
  # Programs run as they are, with the loader and the libraries of the folder. A
  # DT_RPATH, other than a DT_RUNPATH, also serves what the libraries need.
  set(run_path ${root}/usr/lib/${multiarch}:${root}/lib/${multiarch})
  foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT
        -Wl,--disable-new-dtags,-rpath,${run_path})
  endforeach()
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT
         " -Wl,--dynamic-linker=${root}/lib/ld-linux.so.2")
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${CMAKE_SYSTEM_PROCESSOR} -L ${root})
endif()

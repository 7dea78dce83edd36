# Debian's cross compiler for 64-bit Windows, in the variant with C++ threads. The environment variable
# TARVESSA_WINDOWS_QT names the folder of Qt for Windows, once there is one, and TARVESSA_WINDOWS_XLSXWRITER that
# of the library that writes XLSX files.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Programs come from this machine, everything else from the cross compiler's own folder and from Qt's.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
if(DEFINED ENV{TARVESSA_WINDOWS_QT})
  list(APPEND CMAKE_FIND_ROOT_PATH $ENV{TARVESSA_WINDOWS_QT})
  set(CMAKE_PREFIX_PATH $ENV{TARVESSA_WINDOWS_QT})
endif()
if(DEFINED ENV{TARVESSA_WINDOWS_XLSXWRITER})
  list(APPEND CMAKE_FIND_ROOT_PATH $ENV{TARVESSA_WINDOWS_XLSXWRITER})
  list(APPEND CMAKE_PREFIX_PATH $ENV{TARVESSA_WINDOWS_XLSXWRITER})
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt for Windows is built with the tools of this machine's own Qt.
set(QT_HOST_PATH /usr)
file(GLOB host_info /usr/lib/*/cmake/Qt6HostInfo)
list(GET host_info 0 Qt6HostInfo_DIR)
cmake_path(GET Qt6HostInfo_DIR PARENT_PATH QT_HOST_PATH_CMAKE_DIR)

# Cross-compiling for 64-bit Windows with Debian's g++-mingw-w64-x86-64-posix; the "posix" compilers
# are those that bring std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(MINGW_TRIPLE x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${MINGW_TRIPLE}-windres)

# The libraries that build_library has made, by their folders.
set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_TRIPLE} $ENV{MORLIK_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

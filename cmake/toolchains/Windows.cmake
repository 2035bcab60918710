# Programs for Windows (64 bit), made on another system and run there by wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# Of the two kinds that there are, the one with std::thread. C is asked for by GoogleTest's sources.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
# The compiler's own libraries within each program, which then runs wherever it lies.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/Foreign.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

# Cross-compiles for macOS on Apple silicon with the host's clang and lld and a macOS SDK laid out as a sysroot, named
# by MACOS_SDK in the environment. The result is checked, never run: see MacCheck.cmake and scripts/check-mac.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 23.0)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(NIMBLETYPE_MAC_CHECK ON)

if(NOT CMAKE_OSX_SYSROOT)
  if(NOT EXISTS "$ENV{MACOS_SDK}/System/Library/Frameworks")
    message(FATAL_ERROR "MACOS_SDK names no macOS SDK; run scripts/check-mac SDK_DIR")
  endif()
  set(CMAKE_OSX_SYSROOT $ENV{MACOS_SDK} CACHE PATH "The macOS SDK")
endif()
set(CMAKE_OSX_ARCHITECTURES arm64 CACHE STRING "")
set(CMAKE_OSX_DEPLOYMENT_TARGET 14.0 CACHE STRING "")

find_program(NIMBLETYPE_CLANG NAMES clang++-16 clang++ REQUIRED)
find_program(NIMBLETYPE_LLVM_AR NAMES llvm-ar-16 llvm-ar REQUIRED)
find_program(NIMBLETYPE_LLVM_RANLIB NAMES llvm-ranlib-16 llvm-ranlib REQUIRED)
# The SDK's headers take the oldest system to support from a macro that clang has had since version 17.
set(flags "-stdlib++-isystem ${CMAKE_OSX_SYSROOT}/usr/include/c++/v1")
string(APPEND flags " -D__ENVIRONMENT_OS_VERSION_MIN_REQUIRED__=140000")
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER ${NIMBLETYPE_CLANG})
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos14)
  set(CMAKE_${language}_FLAGS_INIT ${flags})
endforeach()
set(CMAKE_AR ${NIMBLETYPE_LLVM_AR} CACHE FILEPATH "")
set(CMAKE_RANLIB ${NIMBLETYPE_LLVM_RANLIB} CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL /bin/true CACHE FILEPATH "Never run: nothing is installed from this build")

# The SDK has no stubs for the C and C++ libraries, and the portable libraries have no macOS build here: those symbols
# are left for load time. scripts/check-mac looks at every one of them afterwards.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld -nodefaultlibs -lobjc -Wl,-undefined,dynamic_lookup")
set(CMAKE_FIND_ROOT_PATH ${CMAKE_OSX_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

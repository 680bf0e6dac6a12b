# Toolchain of the preset macos-cross: lets a Linux machine compile the core and the macOS adapters for a Mac,
# so that a mistake in them is found without one. Nothing is linked: there are no libraries to link with.
#
# TAVRO_MACOS_SDK (environment) names a folder with the Mac's C headers in include/ and its frameworks in
# Frameworks/. The C++ library's headers are those of Clang's own libc++.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(TAVRO_MACOS_SDK "$ENV{TAVRO_MACOS_SDK}" CACHE PATH "Folder with the macOS headers and frameworks")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAVRO_MACOS_SDK)
foreach(needed IN ITEMS include/TargetConditionals.h Frameworks/CoreMIDI.framework)
    if(NOT EXISTS "${TAVRO_MACOS_SDK}/${needed}")
        message(FATAL_ERROR "TAVRO_MACOS_SDK is \"${TAVRO_MACOS_SDK}\", which has no ${needed}")
    endif()
endforeach()

find_program(TAVRO_MACOS_CLANG NAMES clang++-19 clang++ REQUIRED)
set(CMAKE_CXX_COMPILER "${TAVRO_MACOS_CLANG}")
set(CMAKE_OBJCXX_COMPILER "${TAVRO_MACOS_CLANG}")
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-macos13)
set(CMAKE_OBJCXX_COMPILER_TARGET arm64-apple-macos13)
# CMake insists on having it, and only linking would call it.
set(CMAKE_INSTALL_NAME_TOOL install_name_tool CACHE STRING "")

execute_process(
    COMMAND "${TAVRO_MACOS_CLANG}" --print-resource-dir
    OUTPUT_VARIABLE clangResources
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(libcxxHeaders "${clangResources}/../../../include/c++/v1" ABSOLUTE)
if(NOT EXISTS "${libcxxHeaders}/version")
    message(FATAL_ERROR "${libcxxHeaders} has no C++ library headers (Debian: libc++-19-dev)")
endif()

# The two libraries of the core are taken from this machine, and of its system headers only those two: the
# others would hide the Mac's.
if(NOT TAVRO_HOST_HEADERS)
    set(TAVRO_HOST_HEADERS "${CMAKE_BINARY_DIR}/host-headers")
    find_path(TAVRO_HOST_NLOHMANN nlohmann/json.hpp PATHS /usr/include /usr/local/include REQUIRED)
    find_path(TAVRO_HOST_UTF8PROC utf8proc.h PATHS /usr/include /usr/local/include REQUIRED)
    file(MAKE_DIRECTORY "${TAVRO_HOST_HEADERS}")
    file(CREATE_LINK "${TAVRO_HOST_NLOHMANN}/nlohmann" "${TAVRO_HOST_HEADERS}/nlohmann" SYMBOLIC)
    file(CREATE_LINK "${TAVRO_HOST_UTF8PROC}/utf8proc.h" "${TAVRO_HOST_HEADERS}/utf8proc.h" SYMBOLIC)
    file(WRITE "${TAVRO_HOST_HEADERS}/cmake/nlohmann_jsonConfig.cmake"
        "if(NOT TARGET nlohmann_json::nlohmann_json)\n"
        "    add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)\n"
        "endif()\n")
    file(WRITE "${TAVRO_HOST_HEADERS}/cmake/nlohmann_jsonConfigVersion.cmake"
        "set(PACKAGE_VERSION \${PACKAGE_FIND_VERSION})\nset(PACKAGE_VERSION_COMPATIBLE TRUE)\n")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAVRO_HOST_HEADERS)
set(nlohmann_json_DIR "${TAVRO_HOST_HEADERS}/cmake" CACHE PATH "")

string(JOIN " " macOSFlags
    -nostdinc++ -nostdlibinc
    -isystem "${libcxxHeaders}"
    -isystem "${TAVRO_HOST_HEADERS}"
    # After the compiler's own headers, as on a Mac: some of the Mac's refer back to those.
    -idirafter "${TAVRO_MACOS_SDK}/include"
    -iframework "${TAVRO_MACOS_SDK}/Frameworks"
    -fblocks)
set(CMAKE_CXX_FLAGS_INIT "${macOSFlags}")
set(CMAKE_OBJCXX_FLAGS_INIT "${macOSFlags} -fobjc-arc")

set(TAVRO_CORE_ONLY ON CACHE BOOL "" FORCE)
set(TAVRO_MACOS_TYPECHECK ON CACHE BOOL "Compile the macOS adapters, without linking" FORCE)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(TAVRO_CCACHE ccache)
if(TAVRO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without the folder's own path in the key, a second clone finds what the first has compiled.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_ctime,include_file_mtime "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "${TAVRO_CCACHE}")
    set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # While linking, GCC sees the headers of Qt and the standard library as if they were ours, and warns of paths in
    # them that cannot be taken. What is ours is judged where it is compiled.
    add_link_options(-Wno-alloc-size-larger-than -Wno-restrict -Wno-stringop-overflow)
endif()

# Every target of the project, and nothing of a library, is compiled with these.
add_library(tavro_settings INTERFACE)
target_compile_features(tavro_settings INTERFACE cxx_std_20)
target_include_directories(tavro_settings INTERFACE "${PROJECT_SOURCE_DIR}/Sources")
target_compile_definitions(tavro_settings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
target_compile_options(tavro_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 takes the joining of a literal and a std::string for an overlap when it is optimised (PR 105651).
    target_compile_options(tavro_settings INTERFACE -Wno-restrict)
endif()
if(TAVRO_WARNINGS_AS_ERRORS)
    target_compile_options(tavro_settings INTERFACE -Werror)
endif()
if(TAVRO_SANITIZE)
    # For everything, third-party sources built here included: a half instrumented program reports nonsense.
    add_compile_options(-fsanitize=${TAVRO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TAVRO_SANITIZE})
endif()
if(TAVRO_COVERAGE)
    add_compile_options(--coverage -O0)
    add_link_options(--coverage)
endif()

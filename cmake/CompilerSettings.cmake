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
        env CCACHE_NOHASHDIR=1 "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "${TAVRO_CCACHE}")
    set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()

# Every target of the project, and nothing of a library, is compiled with these.
add_library(tavro_settings INTERFACE)
target_compile_features(tavro_settings INTERFACE cxx_std_20)
target_include_directories(tavro_settings INTERFACE "${PROJECT_SOURCE_DIR}/Sources")
target_compile_definitions(tavro_settings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
target_compile_options(tavro_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
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

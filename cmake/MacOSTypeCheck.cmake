# Compiles the macOS adapters for the preset macos-cross. See MacOSCross.cmake.
file(GLOB_RECURSE macOSSources CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/Sources/Platform/MacOS/*.cpp"
    "${PROJECT_SOURCE_DIR}/Sources/Platform/MacOS/*.mm")
if(NOT macOSSources)
    message(FATAL_ERROR "Sources/Platform/MacOS has nothing to check")
endif()
if(macOSSources MATCHES "\\.mm(;|$)")
    enable_language(OBJCXX)
endif()

# Qt for the Mac is not at hand. Its headers are the same on every platform but for the configuration, which
# the adapters do not ask about, so those of this machine serve.
file(GLOB hostQtHeaders /usr/include/*/qt6/QtCore/qglobal.h /usr/include/qt6/QtCore/qglobal.h)
if(NOT hostQtHeaders)
    message(FATAL_ERROR "No Qt 6 headers in /usr/include (Debian: qt6-base-dev)")
endif()
list(GET hostQtHeaders 0 hostQtHeaders)
cmake_path(GET hostQtHeaders PARENT_PATH hostQtHeaders)
cmake_path(GET hostQtHeaders PARENT_PATH hostQtHeaders)

add_library(tavro_macos_adapters OBJECT ${macOSSources})
target_link_libraries(tavro_macos_adapters PRIVATE tavro_settings)
target_include_directories(tavro_macos_adapters SYSTEM PRIVATE
    "${hostQtHeaders}" "${hostQtHeaders}/QtCore" "${hostQtHeaders}/QtGui" "${hostQtHeaders}/QtNetwork")

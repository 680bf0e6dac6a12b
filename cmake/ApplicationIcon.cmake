# The program's icon at the sizes that desktops ask for, drawn from Packaging/icons/tavro.svg at build time.
# Those up to 256 are resources of the target; all stand in the folder TAVRO_ICON_FOLDER
# (hicolor/NxN/apps/tavro.png) for packages.
find_package(Qt6 6.4 REQUIRED COMPONENTS Svg)

add_executable(IconRenderer "${PROJECT_SOURCE_DIR}/Packaging/icons/IconRenderer.cpp")
target_link_libraries(IconRenderer PRIVATE Qt6::Gui Qt6::Svg)

set(TAVRO_ICON_FOLDER "${PROJECT_BINARY_DIR}/icons")

#   tavro_add_icon(<target>)
function(tavro_add_icon target)
    set(drawing "${PROJECT_SOURCE_DIR}/Packaging/icons/tavro.svg")
    foreach(size 16 22 24 32 48 64 128 256 512)
        set(icon "${TAVRO_ICON_FOLDER}/hicolor/${size}x${size}/apps/tavro.png")
        cmake_path(GET icon PARENT_PATH folder)
        file(MAKE_DIRECTORY "${folder}")
        add_custom_command(OUTPUT "${icon}"
            COMMAND IconRenderer "${drawing}" ${size} "${icon}"
            DEPENDS IconRenderer "${drawing}"
            VERBATIM)
        set_source_files_properties("${icon}" PROPERTIES QT_RESOURCE_ALIAS "${size}.png")
        # The largest is for packages: windows carry their icons with them through the window system.
        if(size LESS_EQUAL 256)
            list(APPEND shown "${icon}")
        endif()
        list(APPEND icons "${icon}")
    endforeach()
    add_custom_target(${target}_icons ALL DEPENDS ${icons})
    qt_add_resources(${target} application_icon PREFIX /tavro/icons FILES ${shown})
endfunction()

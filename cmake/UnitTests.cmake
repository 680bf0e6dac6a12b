# Programs of unit tests: one executable for a folder of Sources, one entry in ctest for an executable. What
# became of the single cases stands in its report, reports/<name>.xml in the build folder.
set(TAVRO_TEST_REPORTS "${CMAKE_BINARY_DIR}/reports")
set(TAVRO_UNIT_RUNNER "${PROJECT_SOURCE_DIR}/Tests/unit.sh")

#   tavro_add_test_headers(<name> LIBRARIES <library>... HEADERS <header>...)
# Headers that are read once for all programs that name it in HEADERS; these link the same libraries.
function(tavro_add_test_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS")
    file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" CONTENT "" @ONLY)
    add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} rapidcheck rapidcheck_gtest GTest::gmock)
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    tavro_leave_out_lines(${name})
    tavro_keep_precompiled_headers_cached(${name})
endfunction()

# The time of a header's last change must not stand in what is compiled from it, or no compiler cache knows it again.
function(tavro_keep_precompiled_headers_cached target)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
endfunction()

# A failed expectation tells its line by itself, and what the sanitizers find is found in the sources, which keep theirs:
# tables of lines for the tests alone are a third of what compiling them costs.
function(tavro_leave_out_lines target)
    if(TAVRO_SANITIZE)
        target_compile_options(${target} PRIVATE -g0)
    endif()
endfunction()

#   tavro_add_unit_tests(<name> LIBRARIES <library>... SOURCES <file>... [ALONE <file>...] [HEADERS <headers>]
#       [OWN_MAIN] [TRIALS <number>] [ENVIRONMENT <variable>=<value>...])
# ALONE: sources that call things of their own as other files of the program do, and so stay out of batches.
# TRIALS: of each property, where the usual 100 are too few.
function(tavro_add_unit_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OWN_MAIN" "HEADERS;TRIALS" "LIBRARIES;SOURCES;ALONE;ENVIRONMENT")
    add_executable(${name} ${arg_SOURCES} ${arg_ALONE})
    tavro_leave_out_lines(${name})
    set_source_files_properties(${arg_ALONE} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/Tests")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} rapidcheck rapidcheck_gtest GTest::gmock)
    if(NOT arg_OWN_MAIN)
        target_link_libraries(${name} PRIVATE GTest::gmock_main)
    endif()
    if(arg_HEADERS)
        target_precompile_headers(${name} REUSE_FROM ${arg_HEADERS})
        tavro_keep_precompiled_headers_cached(${name})
    endif()
    add_dependencies(unit_tests ${name})
    tavro_add_unit_test_run(${name} ${name} TRIALS ${arg_TRIALS} ENVIRONMENT ${arg_ENVIRONMENT})
endfunction()

#   tavro_add_unit_test_run(<name> <program> [TRIALS <number>] [FILTER <cases>] [ENVIRONMENT <variable>=<value>...])
# One run of a program: all of it, or the cases of the filter.
function(tavro_add_unit_test_run name program)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "TRIALS;FILTER" "ENVIRONMENT")
    if(NOT arg_TRIALS)
        set(arg_TRIALS 100)
    endif()
    if(arg_FILTER)
        set(filter "--gtest_filter=${arg_FILTER}")
    endif()
    add_test(NAME ${name}
        COMMAND "${TAVRO_UNIT_RUNNER}" "${TAVRO_TEST_REPORTS}/${name}.xml" ${arg_TRIALS} $<TARGET_FILE:${program}> ${filter})
    set_tests_properties(${name} PROPERTIES LABELS unit TIMEOUT 900 ENVIRONMENT "${arg_ENVIRONMENT}")
endfunction()

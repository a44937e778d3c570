# One function per kind of target, so that every layer is compiled under the same rules.

set(BRIXA_SOURCE_ROOT "${CMAKE_CURRENT_SOURCE_DIR}/src")

# Rules that hold for every target of ours: warnings, the Qt dialect and the include root.
function(brixa_apply_rules target)
    target_include_directories(${target} PUBLIC "${BRIXA_SOURCE_ROOT}")
    target_compile_definitions(
        ${target}
        PUBLIC QT_MESSAGELOGCONTEXT # release builds log function names too
               QT_NO_CAST_FROM_ASCII
               QT_NO_CAST_TO_ASCII
               QT_NO_URL_CAST_FROM_STRING
               QT_NO_FOREACH
               QT_DISABLE_DEPRECATED_BEFORE=0x060400)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /utf-8 /permissive-)
    else()
        target_compile_options(
            ${target}
            PRIVATE -Wall
                    -Wextra
                    # Designated initialisers leave the other fields at their defaults.
                    -Wno-missing-field-initializers
                    -Wpedantic
                    -Wshadow
                    -Wconversion
                    -Wold-style-cast
                    -Wnon-virtual-dtor
                    -Winvalid-pch)
    endif()
    if(BRIXA_CCACHE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR
                                               ${BRIXA_WARNINGS_AS_ERRORS})
endfunction()

# A layer of the program: brixa_add_layer(NAME SOURCES … LINKS … PRECOMPILE …).
# LINKS names what the layer may know; nothing else is visible to it.
function(brixa_add_layer target)
    cmake_parse_arguments(PARSE_ARGV 1 LAYER "" "" "SOURCES;LINKS;PRECOMPILE")
    add_library(${target} STATIC ${LAYER_SOURCES})
    target_link_libraries(${target} PUBLIC ${LAYER_LINKS})
    target_precompile_headers(${target} PRIVATE ${LAYER_PRECOMPILE})
    brixa_apply_rules(${target})
endfunction()

# A test program in a folder of its own: the data directory lies beside the executable, so two
# programs in one folder would share a database.
function(brixa_add_test target)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "SERIAL" "" "SOURCES;LINKS;LABELS")
    add_executable(${target} ${TEST_SOURCES})
    target_link_libraries(${target} PRIVATE brixa_test_support ${TEST_LINKS} Qt6::Test)
    target_precompile_headers(${target} PRIVATE <QtTest> <QString> <QTemporaryDir>)
    brixa_apply_rules(${target})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                               "${CMAKE_BINARY_DIR}/tests/${target}")
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(
        ${target}
        PROPERTIES ENVIRONMENT "${BRIXA_TEST_ENVIRONMENT}" RUN_SERIAL ${TEST_SERIAL})
endfunction()

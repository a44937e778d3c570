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
# LINKS names what the layer may know; nothing else is visible to it. PRECOMPILE_AS, in place of
# PRECOMPILE, names a layer of the same Qt modules whose precompiled headers serve here too.
function(brixa_add_layer target)
    cmake_parse_arguments(PARSE_ARGV 1 LAYER "" "PRECOMPILE_AS" "SOURCES;LINKS;PRECOMPILE")
    add_library(${target} STATIC ${LAYER_SOURCES})
    target_link_libraries(${target} PUBLIC ${LAYER_LINKS})
    if(LAYER_PRECOMPILE_AS)
        target_precompile_headers(${target} REUSE_FROM ${LAYER_PRECOMPILE_AS})
    else()
        target_precompile_headers(${target} PRIVATE ${LAYER_PRECOMPILE})
    endif()
    brixa_apply_rules(${target})
endfunction()

# Qt's headers for the test programs, precompiled once: making them again for each program took
# more than half of the time of the whole build. MODULES are Qt modules that every user links too;
# the compiler refuses the headers in a program that does not.
function(brixa_precompile_for_tests target)
    cmake_parse_arguments(PARSE_ARGV 1 SHARED "" "" "MODULES;HEADERS")
    set(unit "${CMAKE_CURRENT_BINARY_DIR}/${target}.cpp")
    file(CONFIGURE OUTPUT "${unit}" CONTENT "")
    add_library(${target} OBJECT "${unit}")
    target_link_libraries(${target} PRIVATE ${SHARED_MODULES})
    target_precompile_headers(${target} PRIVATE ${SHARED_HEADERS})
    brixa_apply_rules(${target})
    brixa_forget_test_folders(${target})
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
endfunction()

# Lets a target take the precompiled headers of another that brixa_precompile_for_tests() made.
function(brixa_use_precompiled target headers)
    brixa_forget_test_folders(${target})
    target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()

# Qt tells each test its folders by macros (for QFINDTESTDATA, which no test uses). Precompiled
# headers can be shared only where all macros are the same.
function(brixa_forget_test_folders target)
    if(NOT MSVC)
        target_compile_options(${target} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
    endif()
endfunction()

# A test program in a folder of its own: the data directory lies beside the executable, so two
# programs in one folder would share a database. WITHOUT_WIDGETS names one of the two lower layers.
function(brixa_add_test target)
    cmake_parse_arguments(PARSE_ARGV 1 TEST "WITHOUT_WIDGETS" "" "SOURCES;LINKS")
    add_executable(${target} ${TEST_SOURCES})
    target_link_libraries(${target} PRIVATE brixa_test_support ${TEST_LINKS} Qt6::Test)
    if(TEST_WITHOUT_WIDGETS)
        brixa_use_precompiled(${target} brixa_test_headers)
    else()
        brixa_use_precompiled(${target} brixa_test_gui_headers)
    endif()
    brixa_apply_rules(${target})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY
                                               "${CMAKE_BINARY_DIR}/tests/${target}")
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES ENVIRONMENT "${BRIXA_TEST_ENVIRONMENT}")
endfunction()

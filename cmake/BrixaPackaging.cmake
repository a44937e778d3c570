# The portable folder: the program with everything of Qt that it loads, so that it runs where no Qt
# is installed. `cmake --install` makes it, CPack packs it. The component "program" alone is what
# ./run installs on the machine that built it.

if(WIN32)
    configure_file("${CMAKE_SOURCE_DIR}/resources/windows/brixa.rc.in"
                   "${CMAKE_BINARY_DIR}/brixa.rc" @ONLY)
    target_sources(brixa PRIVATE "${CMAKE_BINARY_DIR}/brixa.rc")
endif()

install(TARGETS brixa RUNTIME DESTINATION . COMPONENT program)
install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs" DESTINATION . COMPONENT runtime)

if(UNIX AND NOT APPLE)
    # An old-style RPATH, because it also serves what the program's libraries and plugins need in
    # their turn; a RUNPATH does not.
    set_target_properties(brixa PROPERTIES INSTALL_RPATH "$ORIGIN/lib")
    target_link_options(brixa PRIVATE "LINKER:--disable-new-dtags")

    get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
    execute_process(
        COMMAND "${qmake}" -query QT_INSTALL_PLUGINS
        OUTPUT_VARIABLE BRIXA_QT_PLUGINS
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    execute_process(
        COMMAND "${qmake}" -query QT_INSTALL_TRANSLATIONS
        OUTPUT_VARIABLE BRIXA_QT_TRANSLATIONS
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    configure_file("${CMAKE_SOURCE_DIR}/cmake/BundleRuntime.cmake.in"
                   "${CMAKE_BINARY_DIR}/BundleRuntime.cmake" @ONLY)
    install(SCRIPT "${CMAKE_BINARY_DIR}/BundleRuntime.cmake" COMPONENT runtime)
    install(FILES "${CMAKE_SOURCE_DIR}/resources/desktop/brixa.desktop" DESTINATION .
            COMPONENT runtime)
    install(FILES "${CMAKE_SOURCE_DIR}/resources/logo/logo.svg" DESTINATION . RENAME brixa.svg
            COMPONENT runtime)
    set(CPACK_GENERATOR TGZ)
else()
    qt_generate_deploy_app_script(
        TARGET brixa
        FILENAME_VARIABLE deploy_script
        NO_UNSUPPORTED_PLATFORM_ERROR)
    install(SCRIPT "${deploy_script}" COMPONENT runtime)
    set(CPACK_GENERATOR ZIP)
endif()

set(CPACK_PACKAGE_NAME Brixa)
set(CPACK_PACKAGE_VENDOR Brixa)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_COMPONENTS_ALL program runtime)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_STRIP_FILES ON)
include(CPack)

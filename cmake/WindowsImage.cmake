# The image of the Windows executable: its manifest, its version block, the oldest Windows that starts it, and
# the flag that keeps it from loading DLLs from the folder it was downloaded to.

string (REPLACE "." "," ORVEX_CLEANER_VERSION_NUMBERS "${PROJECT_VERSION}.0")
configure_file (src/app/OrvexCleaner.manifest.in OrvexCleaner.manifest @ONLY)
configure_file (src/app/OrvexCleaner.rc.in OrvexCleaner.rc @ONLY)

target_sources (OrvexCleaner PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/OrvexCleaner.rc")
set_source_files_properties ("${CMAKE_CURRENT_BINARY_DIR}/OrvexCleaner.rc" PROPERTIES
    OBJECT_DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/OrvexCleaner.manifest")

# Deletion recurses once per nested folder, and a path of Windows has room for 16,383 of them.
set (stack_bytes 4194304)

if (MSVC)
    # The linker adds no manifest of its own. /DYNAMICBASE, /HIGHENTROPYVA and /NXCOMPAT are its defaults.
    target_link_options (OrvexCleaner PRIVATE
        /STACK:${stack_bytes} /SUBSYSTEM:CONSOLE,6.01 /MANIFEST:NO /DEPENDENTLOADFLAG:0x800)
else()
    target_sources (OrvexCleaner PRIVATE src/app/Image_windows.c)
    target_link_options (OrvexCleaner PRIVATE
        -Wl,--stack,${stack_bytes}
        -Wl,--major-os-version,6,--minor-os-version,1 # Windows 7
        -Wl,--major-subsystem-version,6,--minor-subsystem-version,1)

    if (ORVEX_MINGW_OF_DEBIAN)
        target_link_options (OrvexCleaner PRIVATE -Wl,-Xlink=-map:OrvexCleaner.map)
        # Debian's header has the flags under their old name.
        set_source_files_properties (src/app/Image_windows.c PROPERTIES
            COMPILE_DEFINITIONS DependentLoadFlags=Reserved1)
    endif()

    # The copy and the map resolve the addresses in a crash report.
    if (CMAKE_BUILD_TYPE STREQUAL Release)
        add_custom_command (TARGET OrvexCleaner POST_BUILD
            COMMAND ${CMAKE_COMMAND} -E copy OrvexCleaner.exe OrvexCleaner-unstripped.exe
            COMMAND ${CMAKE_STRIP} OrvexCleaner.exe)
    endif()
endif()

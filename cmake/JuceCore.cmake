# Makes the target juce_core from the sources of JUCE's core module.

set (ORVEX_JUCE_MODULES_DIR /usr/share/juce/modules
    CACHE PATH "The folder of JUCE's modules, as Debian's juce-modules-source or a checkout of JUCE has it")

set (juce_header "${ORVEX_JUCE_MODULES_DIR}/juce_core/system/juce_StandardHeader.h")

if (NOT EXISTS "${juce_header}")
    message (FATAL_ERROR
        "There is no JUCE in ${ORVEX_JUCE_MODULES_DIR}. Install Debian's package juce-modules-source, "
        "or set ORVEX_JUCE_MODULES_DIR to the folder \"modules\" of a checkout of JUCE 7.0.4.")
endif()

file (STRINGS "${juce_header}" version_lines REGEX "#define JUCE_(MAJOR_VERSION|MINOR_VERSION|BUILDNUMBER) ")
string (REGEX REPLACE "[^;0-9]+([0-9]+)" "\\1" juce_version "${version_lines}")
string (REPLACE ";" "." juce_version "${juce_version}")

if (juce_version VERSION_LESS 7.0.4 OR juce_version VERSION_GREATER_EQUAL 7.1)
    message (FATAL_ERROR
        "The JUCE in ${ORVEX_JUCE_MODULES_DIR} is version ${juce_version}; "
        "Orvex Cleaner needs 7.0.4 or a later 7.0.x.")
endif()

message (STATUS "JUCE ${juce_version} in ${ORVEX_JUCE_MODULES_DIR}")

add_library (juce_core STATIC src/juce/juce_core.cpp)
target_include_directories (juce_core SYSTEM PUBLIC "${ORVEX_JUCE_MODULES_DIR}")
target_compile_definitions (juce_core PUBLIC
    JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1
    JUCE_STANDALONE_APPLICATION=1
    JUCE_USE_CURL=0
    $<IF:$<CONFIG:Debug>,_DEBUG=1,NDEBUG=1>)

if (MSVC)
    target_compile_options (juce_core PRIVATE /W0)
else()
    target_compile_options (juce_core PRIVATE -w)
endif()

# Debian's package leaves the bundled zlib out.
if (NOT EXISTS "${ORVEX_JUCE_MODULES_DIR}/juce_core/zip/zlib/zlib.h")
    set (ZLIB_USE_STATIC_LIBS ${WIN32})
    find_package (ZLIB REQUIRED)
    target_compile_definitions (juce_core PRIVATE JUCE_INCLUDE_ZLIB_CODE=0)
    target_link_libraries (juce_core PRIVATE ZLIB::ZLIB)
endif()

if (WIN32)
    target_compile_definitions (juce_core PUBLIC UNICODE=1 _UNICODE=1)
    set (system_libraries advapi32 comdlg32 ole32 oleaut32 shell32 shlwapi user32 version wininet winmm ws2_32)

    if (MINGW AND CMAKE_CROSSCOMPILING)
        include (ShortImports)
        make_short_imports (system_libraries)
    endif()

    target_link_libraries (juce_core PRIVATE ${system_libraries} uuid)
else()
    find_package (Threads REQUIRED)
    target_link_libraries (juce_core PRIVATE Threads::Threads ${CMAKE_DL_LIBS} rt)
endif()

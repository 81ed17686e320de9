# Makes the target juce_core from the sources of JUCE's core module.

include (FetchContent)

# Sets "version" to the version of the JUCE in a folder of modules, or to nothing if there is none.
function (get_juce_version folder version)
    set (header "${folder}/juce_core/system/juce_StandardHeader.h")
    set (lines "")

    if (EXISTS "${header}")
        file (STRINGS "${header}" lines REGEX "#define JUCE_(MAJOR_VERSION|MINOR_VERSION|BUILDNUMBER) ")
    endif()

    string (REGEX REPLACE "[^;0-9]+([0-9]+)" "\\1" lines "${lines}")
    string (REPLACE ";" "." lines "${lines}")
    set (${version} "${lines}" PARENT_SCOPE)
endfunction()

set (default_modules /usr/share/juce/modules)
get_juce_version ("${default_modules}" juce_version)

if (DEFINED ENV{ORVEX_JUCE_MODULES_DIR})
    set (default_modules "$ENV{ORVEX_JUCE_MODULES_DIR}")
elseif (juce_version VERSION_LESS 7.0.4 OR juce_version VERSION_GREATER_EQUAL 7.1)
    set (default_modules "")
endif()

set (ORVEX_JUCE_MODULES_DIR "${default_modules}" CACHE PATH
    "The folder of JUCE's modules, as Debian 12's juce-modules-source or a checkout of JUCE has it; fetched if empty")
set (juce_modules "${ORVEX_JUCE_MODULES_DIR}")

if (juce_modules STREQUAL "")
    message (STATUS "Fetching JUCE 7.0.4: no folder is set, and Debian's JUCE is missing or not 7.0.4 or a later 7.0.x")
    FetchContent_Declare (juce
        GIT_REPOSITORY https://github.com/juce-framework/JUCE.git
        GIT_TAG 4e68af7fde8a0a64e808fb1a37999a690873c9de
        SOURCE_SUBDIR modules/juce_core) # has no CMakeLists.txt, so nothing is added to the build
    FetchContent_MakeAvailable (juce)
    set (juce_modules "${juce_SOURCE_DIR}/modules")
endif()

get_juce_version ("${juce_modules}" juce_version)

if (juce_version VERSION_LESS 7.0.4 OR juce_version VERSION_GREATER_EQUAL 7.1)
    message (FATAL_ERROR
        "Orvex Cleaner needs JUCE 7.0.4 or a later 7.0.x, but the version in ${juce_modules} is "
        "'${juce_version}'. Set ORVEX_JUCE_MODULES_DIR to the folder \"modules\" of such a JUCE, "
        "or to an empty string to fetch 7.0.4.")
endif()

message (STATUS "JUCE ${juce_version} in ${juce_modules}")
set (ORVEX_JUCE_VERSION "${juce_version}" CACHE INTERNAL "For the bill of materials")

add_library (juce_core STATIC src/juce/juce_core.cpp)
set_target_properties (juce_core PROPERTIES COMPILE_WARNING_AS_ERROR OFF)
target_include_directories (juce_core SYSTEM PUBLIC "${juce_modules}")
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

# Debian's package lacks the bundled zlib. No code in the executable calls zlib, so the linker drops the bundled
# one. It keeps 72 kB of Debian's zlib for Windows, since lld drops only COMDAT sections, and its objects have none.
if (NOT EXISTS "${juce_modules}/juce_core/zip/zlib/zlib.h")
    set (ZLIB_USE_STATIC_LIBS ${WIN32})
    find_package (ZLIB REQUIRED)
    target_compile_definitions (juce_core PRIVATE JUCE_INCLUDE_ZLIB_CODE=0)
    target_link_libraries (juce_core PRIVATE ZLIB::ZLIB)
endif()

if (WIN32)
    target_compile_definitions (juce_core PUBLIC UNICODE=1 _UNICODE=1)
    set (system_libraries advapi32 comdlg32 ole32 oleaut32 shell32 shlwapi user32 version wininet winmm ws2_32)

    if (ORVEX_MINGW_OF_DEBIAN)
        include (ShortImports)
        make_short_imports (system_libraries)
    endif()

    target_link_libraries (juce_core PRIVATE ${system_libraries} uuid)
else()
    find_package (Threads REQUIRED)
    target_link_libraries (juce_core PRIVATE Threads::Threads ${CMAKE_DL_LIBS} rt)
endif()

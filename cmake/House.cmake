# What every target of this code base is built with, and the functions that make the targets.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(OVELDRA_CCACHE ccache)
if(OVELDRA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Precompiled headers carry time stamps; ccache must be told that they may differ. What one copy of the sources
    # compiled serves another copy in another folder.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
        "${OVELDRA_CCACHE}")
endif()

# Flags of every house target, on one interface target so that nothing can forget them.
add_library(oveldra_house INTERFACE)
target_compile_options(oveldra_house INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wcast-qual
    -Wconversion -Wsign-conversion -Wformat=2 -Wimplicit-fallthrough -Wextra-semi
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wsuggest-override -fpch-preprocess>
    $<$<CXX_COMPILER_ID:Clang>:-Wsuggest-override -Wno-unused-command-line-argument>
    # As for ccache: Clang must not compare the times of a precompiled header's sources, either.
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
target_compile_definitions(oveldra_house INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
# What Debian hardens its programs with, and no folder of the building machine in what people get. The Release builds of
# packages and of people are the same, so that each source is compiled once for both.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    target_compile_options(oveldra_house INTERFACE
        $<$<CONFIG:Release>:-fstack-protector-strong -D_FORTIFY_SOURCE=2 -Wdate-time -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
endif()
if(OVELDRA_SANITIZE)
    target_compile_options(oveldra_house INTERFACE
        -fsanitize=${OVELDRA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(oveldra_house INTERFACE -fsanitize=${OVELDRA_SANITIZE})
endif()
if(OVELDRA_FUZZ)
    target_compile_options(oveldra_house INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(OVELDRA_COVERAGE)
    target_compile_options(oveldra_house INTERFACE --coverage)
    target_link_options(oveldra_house INTERFACE --coverage)
endif()

# Programs and tests are not optimised in a Debug build: compiling them is what they cost there, and the libraries do the work.
add_library(oveldra_program INTERFACE)
target_link_libraries(oveldra_program INTERFACE oveldra_house)
target_compile_options(oveldra_program INTERFACE $<$<CONFIG:Debug>:-O0>)

# oveldra_library(NAME PCH pch-target SOURCES … LINKS …): the one library of a folder of src/.
function(oveldra_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PCH" "SOURCES;LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name}
        PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>" "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>")
    target_compile_definitions(${name} PRIVATE OVELDRA_BUILDING)
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE $<BUILD_INTERFACE:oveldra_house>)
    target_precompile_headers(${name} REUSE_FROM ${arg_PCH})
endfunction()

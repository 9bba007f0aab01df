# What the libraries for Windows are built with, besides Qt. They are cross-built: packaging/windows/build.

add_compile_definitions(UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
enable_language(C RC)

# SQLite's own single file, in the folder that packaging/windows/qt fetched it to.
set(OVELDRA_SQLITE "" CACHE PATH "Folder of sqlite3.c and sqlite3.h")
add_library(oveldra_sqlite STATIC "${OVELDRA_SQLITE}/sqlite3.c")
target_include_directories(oveldra_sqlite SYSTEM PUBLIC "${OVELDRA_SQLITE}")
target_compile_options(oveldra_sqlite PRIVATE -O2)
target_compile_definitions(oveldra_sqlite PRIVATE SQLITE_DQS=0 SQLITE_OMIT_LOAD_EXTENSION)
add_library(SQLite::SQLite3 ALIAS oveldra_sqlite)

# The compiler of interface descriptions, the descriptions of the automation runtime and its type library.
find_program(OVELDRA_WIDL widl REQUIRED)
find_path(OVELDRA_IDL_INCLUDES oaidl.idl PATHS /usr/include/wine/wine/windows NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(OVELDRA_IDL_LIBRARIES stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(OVELDRA_QT_TRANSLATIONS qtbase_es.qm PATHS /usr/share/qt6/translations NO_CMAKE_FIND_ROOT_PATH REQUIRED)

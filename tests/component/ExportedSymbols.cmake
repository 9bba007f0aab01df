# What the shared library shows to a linker: the classes and functions of the public headers, nothing else.
# -D LIBRARY=the library  -D NM=the nm program

cmake_minimum_required(VERSION 3.25)

set(classes "ConexionDB|Recordset|RuntimeError|WriteBurst|_cloVELDRAMain|cloVELDRAMain")
set(functions "connectStore|createStore")
set(allowed "^((vtable|typeinfo|typeinfo name) for oVELDRA::(${classes})|oVELDRA::(${classes})::.*|oVELDRA::(${functions})\\(.*)$")
set(expected
    "oVELDRA::cloVELDRAMain::cloVELDRAMain()"
    "oVELDRA::cloVELDRAMain::invoke(QStringView, oVELDRA::MemberKind, QList<QVariant> const&)"
    "oVELDRA::connectStore(QString const&, oVELDRA::Access)"
    "typeinfo for oVELDRA::RuntimeError"
    "typeinfo for oVELDRA::ConexionDB")

execute_process(COMMAND "${NM}" -D --defined-only -C "${LIBRARY}"
    OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," listing "${listing}")
string(REGEX MATCHALL "[^\n]+" lines "${listing}")

set(names)
foreach(line IN LISTS lines)
    # address, kind, name; the names of weak symbols can lack the address
    if(NOT line MATCHES "^[0-9a-f ]+ ([A-Za-z]) (.+)$")
        message(SEND_ERROR "Not a line of nm: ${line}")
        continue()
    endif()
    set(name "${CMAKE_MATCH_2}")
    list(APPEND names "${name}")
    if(NOT name MATCHES "${allowed}")
        message(SEND_ERROR "Exported without being public: ${name}")
    endif()
endforeach()
foreach(name IN LISTS expected)
    if(NOT name IN_LIST names)
        message(SEND_ERROR "Public without being exported: ${name}")
    endif()
endforeach()

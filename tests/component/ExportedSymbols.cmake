# What the shared library shows to a linker: the classes and functions of the public headers, nothing else; and a function
# of the C interface for each member of the class.
# -D LIBRARY=the library  -D NM=the nm program  -D SOURCE=the project's sources

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

file(READ "${SOURCE}/include/oVELDRA/oveldra.h" header)
string(REGEX MATCHALL "OVELDRA_EXPORT [^;]*" declarations "${header}")
list(TRANSFORM declarations REPLACE "^.*[ *](oveldra_[A-Za-z_]+)\\(.*$" "\\1" OUTPUT_VARIABLE c_functions)

file(READ "${SOURCE}/src/core/MemberTable.cpp" table)
string(REGEX MATCHALL "(readMember|writeMember|operationMember)<[^>]*>\\(\"[A-Za-z_]+|Member{\"[A-Za-z_]+" members "${table}")
set(member_functions)
foreach(member IN LISTS members)
    string(REGEX REPLACE "^.*\"" "" name "${member}")
    if(member MATCHES "^readMember")
        list(APPEND member_functions "oveldra_get_${name}")
    elseif(member MATCHES "^writeMember")
        list(APPEND member_functions "oveldra_put_${name}")
    else()
        list(APPEND member_functions "oveldra_${name}")
    endif()
endforeach()
list(LENGTH member_functions count)
if(NOT count EQUAL 20)
    message(SEND_ERROR "20 members were expected in the table, ${count} were found: ${member_functions}")
endif()
foreach(function IN LISTS member_functions)
    if(NOT function IN_LIST c_functions)
        message(SEND_ERROR "A member without its function in C: ${function}")
    endif()
endforeach()

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
    if(NOT name MATCHES "${allowed}" AND NOT name IN_LIST c_functions)
        message(SEND_ERROR "Exported without being public: ${name}")
    endif()
endforeach()
foreach(name IN LISTS expected c_functions)
    if(NOT name IN_LIST names)
        message(SEND_ERROR "Public without being exported: ${name}")
    endif()
endforeach()

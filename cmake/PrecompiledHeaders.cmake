# One precompiled header for code that knows only Qt Core, one for code with windows, one for programs and tests. QtTest's
# own header stays out: it reads a macro that holds each test's folder, and a precompiled header must not depend on that.

function(oveldra_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "BUILDING" "" "HEADERS;LINKS")
    set(source "${CMAKE_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${name} STATIC "${source}")
    if(arg_BUILDING)
        target_compile_definitions(${name} PRIVATE OVELDRA_BUILDING)
        target_link_libraries(${name} PRIVATE oveldra_house)
    else()
        target_link_libraries(${name} PRIVATE oveldra_program)
    endif()
    target_link_libraries(${name} PRIVATE ${arg_LINKS})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

set(core_headers
    <QtCore/QDate> <QtCore/QHash> <QtCore/QLocale> <QtCore/QString> <QtCore/QStringView> <QtCore/QVariant>
    <algorithm> <array> <functional> <memory> <optional> <span> <string> <string_view> <variant> <vector>)
set(widget_headers ${core_headers} <QtWidgets/QtWidgets>)

oveldra_precompiled(oveldra_pch_core BUILDING HEADERS ${core_headers} LINKS Qt6::Core)
oveldra_precompiled(oveldra_pch_widgets BUILDING HEADERS ${widget_headers} LINKS Qt6::Widgets)
oveldra_precompiled(oveldra_pch_app HEADERS ${widget_headers} LINKS Qt6::Widgets)

# Debian packages: what cpack is told about them. packaging/build makes them; it configures for the prefix /usr, where the
# folder of libraries is the architecture's own.

if(NOT LINUX)
    return()
endif()
add_subdirectory(packaging)

get_target_property(soversion oVELDRA SOVERSION)
set(runtime "liboveldra${soversion}")
# A minor version may change the binary interface before 1.0, so that each package goes with the runtime of its own version.
set(own_runtime "${runtime} (= ${PROJECT_VERSION})")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME oveldra)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # would be put before each package's own
set(CPACK_PACKAGE_CONTACT "oVELDRA <oveldra@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE oveldra)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# tornel needs the library, which is not installed when its dependencies are worked out.
get_target_property(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS oVELDRA BINARY_DIR)
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/TriggerLdconfig.cmake")

# A package is what an installation without packages gets, and the package's folder of notes.
foreach(part Runtime Development Host Tools)
    string(TOUPPER "${part}" PART)
    list(APPEND CPACK_COMPONENTS_ALL oVELDRA_${part} oVELDRA_${part}Notes)
    set(CPACK_COMPONENT_OVELDRA_${PART}_GROUP ${part})
    set(CPACK_COMPONENT_OVELDRA_${PART}NOTES_GROUP ${part})
endforeach()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
# Loaded while running, by name: the driver for an office's server, the fonts of the reports, Qt's own texts in Spanish.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-liberation2, libqt6sql6-psql, qt6-translations-l10n")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "temporary-import regime component for customs brokers' suites - library
A suite loads this library and its class cloVELDRAMain to manage goods that
enter without duty as inputs and leave again inside exported products: bills
of inputs, copies of declarations into a stock with CIF values, listings and
what an export subitem discharged. Its screens are in Spanish. The databases
are SQLite files or schemas of a PostgreSQL server.
.
This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liboveldra-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${own_runtime}, qt6-base-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "temporary-import regime component for customs brokers' suites - development
A suite loads the library oVELDRA and its class cloVELDRAMain to manage goods
that enter without duty as inputs and leave again inside exported products.
.
This package holds the headers, the CMake package and examples of hosts.")

set(CPACK_DEBIAN_HOST_PACKAGE_NAME tornel)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "${own_runtime}")
set(CPACK_DEBIAN_HOST_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_DEBIAN_HOST_PACKAGE_SUGGESTS "oveldra-datos, qt6-wayland")
set(CPACK_DEBIAN_HOST_DESCRIPTION
    "customs broker's suite that demonstrates the component oVELDRA
Opens the screens of oVELDRA, the temporary-import regime component, on sample
databases that it makes at its first start: a whole tariff, declarations,
catalogs of products and exports with their discharges. It also plays scripts
on the real screens. Its texts are in Spanish.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME oveldra-datos)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION database)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "libqt6sql6-psql, postgresql-client")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
    "command-line tool for the databases of the component oVELDRA
Makes the databases of oVELDRA, the temporary-import regime component, takes
Access files over, moves databases between SQLite and PostgreSQL with a proof
of counts and sums, checks that the stock of inputs is right, lists the
declarations that are about to expire and makes copies while others work. Its
texts are in Spanish.")

# The runtime's control file shlibs binds every program that is built against it as own_runtime does.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

include(CPack)

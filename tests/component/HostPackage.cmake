# Installs the component into a scratch folder, then configures, builds and runs hosts that know only that folder.
# -D BUILD=build folder  -D SCRATCH=folder to work in  -D HOST=the test host's sources  -D EXAMPLES=the example hosts
# -D GENERATOR -D COMPILER -D CONFIG -D VERSION -D SANITIZE=as the component was built

cmake_minimum_required(VERSION 3.25)

set(prefix "${SCRATCH}/prefix")
file(REMOVE_RECURSE "${SCRATCH}")
file(MAKE_DIRECTORY "${SCRATCH}/config")

foreach(component oVELDRA_Runtime oVELDRA_Development)
    execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${prefix}" --component ${component}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(GLOB_RECURSE installed RELATIVE "${prefix}" "${prefix}/*")
foreach(file IN LISTS installed)
    if(file MATCHES "\\.a$" OR file MATCHES "\\.cpp$")
        message(SEND_ERROR "Installed, but no host needs it: ${file}")
    endif()
    if(file MATCHES "\\.cmake$")
        file(READ "${prefix}/${file}" text)
        string(REGEX MATCH "oveldra_[a-z]+" inside "${text}")
        if(inside)
            message(SEND_ERROR "${file} names a target that is not installed: ${inside}")
        endif()
    endif()
    if(file MATCHES "\\.pc$")
        get_filename_component(pc_folder "${prefix}/${file}" DIRECTORY)
    endif()
endforeach()

set(flags)
if(SANITIZE)
    set(flags "-fsanitize=${SANITIZE}")
endif()
# The C compiler of the same family, for hosts in C: a build of the component has none.
string(REGEX REPLACE "clang\\+\\+" "clang" c_compiler "${COMPILER}")
string(REGEX REPLACE "g\\+\\+" "gcc" c_compiler "${c_compiler}")
string(REGEX REPLACE "c\\+\\+" "cc" c_compiler "${c_compiler}")

# The user's settings are the machine's own otherwise.
set(ENV{XDG_CONFIG_HOME} "${SCRATCH}/config")

# configure(SOURCE BUILD RESULT OUTPUT [definitions …]): configures a host as its developer would.
function(configure source build result output)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -S "${source}" -B "${build}" -G "${GENERATOR}"
            "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DCMAKE_PREFIX_PATH=${prefix}" ${ARGN}
        RESULT_VARIABLE code OUTPUT_VARIABLE said ERROR_VARIABLE said)
    set(${result} "${code}" PARENT_SCOPE)
    set(${output} "${said}" PARENT_SCOPE)
endfunction()

# build_host(SOURCE BUILD [definitions …]): the program is BUILD/host.
function(build_host source build)
    configure("${source}" "${build}" code said ${ARGN})
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "${source} does not configure:\n${said}")
    endif()
    execute_process(COMMAND "${CMAKE_COMMAND}" --build "${build}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# expect(TEXT PROGRAM [arguments …]): runs a host that must end well and say this.
function(expect text)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
    if(NOT said MATCHES "${text}")
        message(FATAL_ERROR "${ARGN} should say \"${text}\" and said: ${said}")
    endif()
endfunction()

# A host in C++: the test's own, and the example, which makes its databases and then finds them.
set(cxx "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${flags}")
build_host("${HOST}" "${SCRATCH}/build" ${cxx} "-DOVELDRA_VERSION=${VERSION}")
expect("the host is content" "${SCRATCH}/build/host")
build_host("${EXAMPLES}/cpp" "${SCRATCH}/cpp" ${cxx})
foreach(start first second)
    expect("^conectado\\." "${SCRATCH}/cpp/host" "${SCRATCH}/cpp" probar)
endforeach()

# What is not there is said by name.
file(WRITE "${SCRATCH}/unknown/CMakeLists.txt"
    "cmake_minimum_required(VERSION 3.25)\n"
    "project(Unknown LANGUAGES NONE)\n"
    "find_package(oVELDRA REQUIRED COMPONENTS C Fortran)\n")
configure("${SCRATCH}/unknown" "${SCRATCH}/unknown/build" code said)
if(code EQUAL 0 OR NOT said MATCHES "oVELDRA has no component \"Fortran\"")
    message(FATAL_ERROR "An unknown component was taken, or not named: ${said}")
endif()

# The header in C, as strictly as a host may compile it, and as C++.
file(WRITE "${SCRATCH}/header.c"
    "#include <oVELDRA/oveldra.h>\nint main(void) { return oveldra_interface() < OVELDRA_INTERFACE; }\n")
set(strict -pedantic -Wall -Wextra -Werror -Wstrict-prototypes -fsyntax-only "-I${prefix}/include")
foreach(standard c99 c11 c17)
    execute_process(COMMAND "${c_compiler}" -std=${standard} ${strict} "${SCRATCH}/header.c" COMMAND_ERROR_IS_FATAL ANY)
endforeach()

if(SANITIZE)
    return() # a program in C does not bring the C++ half of the sanitizers' runtime, which the library needs
endif()

# A host in C, which needs no C++ compiler: by CMake and by pkg-config.
build_host("${EXAMPLES}/c" "${SCRATCH}/c" "-DCMAKE_C_COMPILER=${c_compiler}" "-DCMAKE_CXX_COMPILER=/nowhere/c++"
    "-DCMAKE_C_FLAGS=-pedantic -Wall -Wextra -Werror" -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON)
foreach(start first second)
    expect("^oVELDRA ${VERSION}: conectado\\." "${SCRATCH}/c/host" "${SCRATCH}/c" probar)
endforeach()

find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
execute_process(COMMAND "${pkg_config}" --modversion oveldra
    OUTPUT_VARIABLE said OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT said STREQUAL VERSION)
    message(FATAL_ERROR "pkg-config knows version ${said}, not ${VERSION}")
endif()
execute_process(COMMAND "${pkg_config}" --cflags --libs oveldra
    OUTPUT_VARIABLE words OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(words UNIX_COMMAND "${words}")
execute_process(COMMAND "${pkg_config}" --variable=libdir oveldra
    OUTPUT_VARIABLE libdir OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(MAKE_DIRECTORY "${SCRATCH}/pc")
execute_process(
    COMMAND "${c_compiler}" -std=c11 "${EXAMPLES}/c/main.c" -o "${SCRATCH}/pc/host" ${words} "-Wl,-rpath,${libdir}"
    COMMAND_ERROR_IS_FATAL ANY)
expect("^oVELDRA ${VERSION}: conectado\\." "${SCRATCH}/pc/host" "${SCRATCH}/pc" probar)

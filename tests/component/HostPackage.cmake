# Installs the component into a scratch folder, then configures, builds and runs a host that knows only that folder.
# -D BUILD=build folder  -D SCRATCH=folder to work in  -D HOST=the host's sources
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
endforeach()

set(flags)
if(SANITIZE)
    set(flags "-fsanitize=${SANITIZE}")
endif()
execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${HOST}" -B "${SCRATCH}/build" -G "${GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_BUILD_TYPE=${CONFIG}" "-DCMAKE_CXX_FLAGS=${flags}"
        "-DCMAKE_PREFIX_PATH=${prefix}" "-DOVELDRA_VERSION=${VERSION}"
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" --build "${SCRATCH}/build" COMMAND_ERROR_IS_FATAL ANY)

# The user's settings are the machine's own otherwise.
set(ENV{XDG_CONFIG_HOME} "${SCRATCH}/config")
execute_process(COMMAND "${SCRATCH}/build/host" OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
if(NOT said MATCHES "the host is content")
    message(FATAL_ERROR "The host ended early: ${said}")
endif()

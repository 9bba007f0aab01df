# Libraries that are loaded when they are needed must not come back as ones that every start waits for.
# -D LIBRARY=the library  -D OBJDUMP=the objdump program

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
if(NOT headers MATCHES "NEEDED +libQt6Core")
    message(FATAL_ERROR "No list of needed libraries: ${headers}")
endif()
string(REGEX MATCH "NEEDED +lib(pq|cups)\\.[^\n]*" late "${headers}")
if(late)
    message(FATAL_ERROR "Loaded with the component, not when it is needed: ${late}")
endif()

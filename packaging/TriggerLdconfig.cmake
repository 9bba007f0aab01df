# cpack gives a package with a shared library scripts that call ldconfig. The package's trigger has it called once for all
# packages that are installed together, so the scripts are taken out again.

cmake_minimum_required(VERSION 3.25)

find_program(dpkg_deb dpkg-deb REQUIRED)
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(root "${CPACK_TEMPORARY_DIRECTORY}/repack")
    file(REMOVE_RECURSE "${root}")
    execute_process(COMMAND "${dpkg_deb}" --raw-extract "${package}" "${root}" COMMAND_ERROR_IS_FATAL ANY)
    if(EXISTS "${root}/DEBIAN/triggers")
        file(REMOVE "${root}/DEBIAN/postinst" "${root}/DEBIAN/postrm")
        execute_process(COMMAND "${dpkg_deb}" --root-owner-group -Zxz --build "${root}" "${package}"
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endif()
    file(REMOVE_RECURSE "${root}")
endforeach()

# What is staged for the packages: no run path, since the system finds the libraries, and the time of
# SOURCE_DATE_EPOCH, so that the same sources give the same packages.

file(GLOB_RECURSE binaries ${CPACK_TEMPORARY_DIRECTORY}/*.so* ${CPACK_TEMPORARY_DIRECTORY}/*/bin/*)
foreach(binary IN LISTS binaries)
    if(NOT IS_SYMLINK ${binary})
        file(RPATH_REMOVE FILE ${binary})
    endif()
endforeach()
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec
                            touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
                    COMMAND_ERROR_IS_FATAL ANY)
endif()

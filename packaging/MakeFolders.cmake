# SPDX-License-Identifier: Apache-2.0
# Makes those of the installation's folders that are missing, so that all users can look into them, whatever the umask of
# who installs. What is there already is left as it is.
foreach(folder IN LISTS folders)
    set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${folder})
    set(missing)
    while(NOT EXISTS ${folder})
        list(PREPEND missing ${folder})
        cmake_path(GET folder PARENT_PATH folder)
    endwhile()
    foreach(made IN LISTS missing)
        file(MAKE_DIRECTORY ${made})
        file(CHMOD ${made} DIRECTORY_PERMISSIONS
            OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
    endforeach()
endforeach()

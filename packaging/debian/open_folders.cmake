# Folders were made with the umask of whoever builds; the package's are for everyone to read.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_INSTALL_DIRECTORY}"
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
                           GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

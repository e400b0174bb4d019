# Gives all files of a package the time of the sources that they are made of.
execute_process(COMMAND find ${CPACK_TEMPORARY_INSTALL_DIRECTORY}
  -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} + COMMAND_ERROR_IS_FATAL ANY)

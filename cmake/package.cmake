# What CPack is told, by tools/package: the programs of both builds, one of which is the package's own
# system's, in one package. Takes the variables OWN_BUILD, OTHER_BUILD, PACKAGE_VERSION and PACKAGE_SYSTEM
# of the environment.
set(CPACK_PACKAGE_NAME corvane-launcher)
set(CPACK_PACKAGE_VERSION $ENV{PACKAGE_VERSION})
set(CPACK_PACKAGE_FILE_NAME corvane-launcher-$ENV{PACKAGE_VERSION}-$ENV{PACKAGE_SYSTEM})
set(CPACK_PACKAGE_VENDOR "The Corvane Launcher developers")
set(CPACK_PACKAGE_CONTACT "The Corvane Launcher developers <corvane@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "makes programs for Windows of Java applications")
set(CPACK_PACKAGE_DESCRIPTION "corvane-pack appends a Java application to a small native launcher,
which finds a Java that really works, or brings one along, and starts the application with it.")
set(CPACK_CMAKE_GENERATOR Ninja)
set(CPACK_INSTALL_CMAKE_PROJECTS
  $ENV{OWN_BUILD} Corvane tool / $ENV{OWN_BUILD} Corvane stubs / $ENV{OWN_BUILD} Corvane docs /
  $ENV{OTHER_BUILD} Corvane stubs /)
set(CPACK_INSTALL_SCRIPTS "")
# The same input gives the same bytes.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/package_times.cmake)
set(CPACK_THREADS 1)
if("$ENV{PACKAGE_SYSTEM}" STREQUAL "amd64")
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
  set(CPACK_DEBIAN_PACKAGE_SECTION java)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.36), libstdc++6 (>= 12)")
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "default-jdk-headless, osslsigncode")
  set(CPACK_DEBIAN_COMPRESSION_TYPE gzip)
endif()

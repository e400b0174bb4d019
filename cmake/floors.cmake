# corvane_tell_version(SOURCE...): defines CORVANE_VERSION, the version as users read it.
function(corvane_tell_version)
  set_property(SOURCE ${ARGV} APPEND PROPERTY
    COMPILE_DEFINITIONS CORVANE_VERSION="${PROJECT_VERSION}")
endfunction()

# corvane_floor(NAME SOURCES ... [NEEDS ...]): one floor (or room of a floor) of src/ as a static
# library corvane_NAME that sees the floors named in NEEDS, and through them all that lie below.
function(corvane_floor name)
  cmake_parse_arguments(PARSE_ARGV 1 floor "" "" "SOURCES;NEEDS")
  add_library(corvane_${name} STATIC ${floor_SOURCES})
  target_include_directories(corvane_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(corvane_${name} PRIVATE corvane_warnings)
  # Not for tests, which take elements that they know to be there from lookups that may give null.
  target_compile_options(corvane_${name} PRIVATE -Wnull-dereference)
  foreach(need IN LISTS floor_NEEDS)
    target_link_libraries(corvane_${name} PUBLIC corvane_${need})
  endforeach()
endfunction()

# corvane_small_program(TARGET): links a program that goes to users small, with the manifest of the
# platform floor. For every program of the directory, since that is how the linker is chosen.
macro(corvane_small_program target)
  if(WIN32)
    # The program is linked with the runtime library of the other thread model, which is smaller by
    # 23 kB; it uses nothing in which the two differ (the tests, which do, keep the compiler's own).
    find_program(CORVANE_SMALL_LINKER x86_64-w64-mingw32-g++-win32)
    if(CORVANE_SMALL_LINKER)
      string(REPLACE "<CMAKE_CXX_COMPILER>" "${CORVANE_SMALL_LINKER}" CMAKE_CXX_LINK_EXECUTABLE
        "${CMAKE_CXX_LINK_EXECUTABLE}")
    endif()
    # In the program itself: the runtime's library comes behind ours.
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/platform/win32/Runtime.cpp)
    target_link_libraries(${target} PRIVATE corvane_manifest)
  elseif(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    # The program brings its libraries along: the host needs longer to load them than the launcher for
    # all else that it does in front of a child.
    include(CheckCXXSourceCompiles)
    set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
    check_cxx_source_compiles("int main() {}" CORVANE_STATIC_PIE)
    target_link_options(${target} PRIVATE -s -Wl,--gc-sections
      $<IF:$<BOOL:${CORVANE_STATIC_PIE}>,-static-pie,-static-libstdc++$<SEMICOLON>-static-libgcc>)
  endif()
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
endmacro()

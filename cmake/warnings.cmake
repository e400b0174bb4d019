# The warnings that all of our own code is compiled with. Libraries are not: they are SYSTEM.
add_library(corvane_warnings INTERFACE)
target_compile_options(corvane_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
  -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override -Wimplicit-fallthrough
  -Wformat=2 -Wundef -Wmissing-declarations
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond;-Wduplicated-branches;-Wlogical-op>
  # GCC 12 sees overlapping copies in its own std::string at -O3.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(CORVANE_WARNINGS_AS_ERRORS)
  target_compile_options(corvane_warnings INTERFACE -Werror)
endif()

# The one list of warnings. They are errors in every build; third-party headers are SYSTEM.
add_library(nel_warnings INTERFACE)
target_compile_options(nel_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror
  -Wshadow -Wcast-qual -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override
  -Wmissing-declarations -Wformat=2 -Wno-format-nonliteral)
# gcc 12 and 13 see overlapping copies in std::string's operator+ when they optimise; there are none.
target_compile_options(nel_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Of a constant that nobody uses compilers speak in the source itself only, not in joined ones, which
# are what clang-tidy sees. clang has it in -Wall.
if(NOT CMAKE_UNITY_BUILD)
  target_compile_options(nel_warnings INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wunused-const-variable=1>)
endif()

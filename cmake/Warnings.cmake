# One interface target that carries the compiler's settings for all of our own code.
add_library(korvane_compiler_flags INTERFACE)
target_compile_options(korvane_compiler_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  # The layout has to come out the same to the last bit wherever it is computed.
  -ffp-contract=off)
# GCC 12 takes joined texts for overlapping copies.
target_compile_options(korvane_compiler_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(korvane_compiler_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(KORVANE_WARNINGS_AS_ERRORS)
  target_compile_options(korvane_compiler_flags INTERFACE -Werror)
endif()
if(KORVANE_SANITIZE)
  target_compile_options(korvane_compiler_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(korvane_compiler_flags INTERFACE -fsanitize=address,undefined)
endif()
if(KORVANE_FUZZERS)
  target_compile_options(korvane_compiler_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

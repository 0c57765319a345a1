# How everything below this folder is compiled. The options belong to the folder and not to a target, so that a
# project that uses the libraries does not inherit them.

# -ffp-contract=off: formulas give the same bits on every machine.
add_compile_options(-ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(TAPPORA_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 takes `"text" + std::string` for overlapping copies (GCC bug 105651).
  add_compile_options(-Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT CMAKE_CXX_FLAGS MATCHES "libc\\+\\+")
  # GCC 12's library itself uses what it declares deprecated: std::get_temporary_buffer, in std::stable_sort.
  add_compile_options(-Wno-deprecated-declarations)
endif()
if(TAPPORA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

# Equal results at -O0 and -O2: no fused multiply-add, in either.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Werror -ffp-contract=off)
# Release is -O2 with assertions off; loops still keep the order the source gives them.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

if(RUSTPIKE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(RUSTPIKE_FUZZ)
  set(fuzzing -fsanitize=address,undefined -fno-sanitize-recover=undefined)
  add_compile_options(${fuzzing} -fsanitize=fuzzer-no-link)
  add_link_options(${fuzzing})
endif()

# The sources of a folder, found again at every build when files come or go.
function(rustpike_sources variable folder)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS "${folder}/*.cpp")
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

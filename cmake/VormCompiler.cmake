# How every target of this tree is compiled. None of it reaches an installed target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

add_library(vorm_compiler_options INTERFACE)
target_compile_options(vorm_compiler_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion
                                                       -Wshadow)
# g++ 12 sees overlapping copies in any concatenation of std::string at -O3, where there are none.
target_compile_options(vorm_compiler_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(VORM_WARNINGS_AS_ERRORS)
    target_compile_options(vorm_compiler_options INTERFACE -Werror)
endif()

if(VORM_SANITIZERS)
    add_compile_options(-fsanitize=${VORM_SANITIZERS} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VORM_SANITIZERS})
endif()

# The fuzzer looks for inputs that reach new places of the libraries.
if(VORM_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Headers that are compiled once for a target. g++ 12 forgets which of them are the system's, and then
# warns of faults in these that are none.
function(vorm_precompile_headers target)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        target_precompile_headers(${target} ${ARGN})
    endif()
endfunction()

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

# Lets the fuzz targets look for inputs that reach new places of that library.
function(vorm_watch_for_fuzzing target)
    if(VORM_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()

# Headers that are compiled once for a target. g++ 12 forgets which of them are the system's, and then
# warns of faults in std::string that are none; clang looks for these, too.
function(vorm_precompile_headers target)
    target_precompile_headers(${target} ${ARGN})
    target_compile_options(
        ${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds -Wno-stringop-overflow>)
endfunction()

set(VORM_COMPILE_TOGETHER OFF CACHE STRING
    "Compile small sources of a folder as one: OFF, ON, or REVERSED for the last one first")

# Lets sources of a target be compiled several at a time where a build starts from nothing: most of the
# time of each goes to what it includes. Each compiles alone all the same: what one lacks and another
# includes before it is missed in one of the two orders.
function(vorm_compile_at_a_time target name most)
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
    if(VORM_COMPILE_TOGETHER)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON)
    endif()
    set(sources ${ARGN})
    if(VORM_COMPILE_TOGETHER STREQUAL REVERSED)
        get_target_property(others ${target} SOURCES)
        list(REMOVE_ITEM others ${sources})
        list(REVERSE sources)
        set_target_properties(${target} PROPERTIES SOURCES "${others};${sources}")
    endif()
    list(LENGTH sources count)
    math(EXPR groups "(${count} + ${most} - 1) / ${most}")
    set(index 0)
    foreach(source IN LISTS sources)
        math(EXPR group "${index} * ${groups} / ${count}")
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${name}_${group})
        math(EXPR index "${index} + 1")
    endforeach()
endfunction()

# The same for the sources of a folder, but for some that are large.
function(vorm_compile_together target folder)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "BUT")
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "^${folder}/[^/]*$")
    list(TRANSFORM arg_BUT PREPEND "${folder}/")
    list(REMOVE_ITEM sources ${arg_BUT} "")
    vorm_compile_at_a_time(${target} ${folder} 8 ${sources})
endfunction()

include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS "-std=c++17")
check_cxx_source_compiles("#include <charconv>\nint main() { double d; return std::from_chars(\"1\", \"1\", d).ptr == nullptr; }"
    NYXML_HAS_FROM_CHARS_FOR_REALS)
unset(CMAKE_REQUIRED_FLAGS)
if(NOT NYXML_HAS_FROM_CHARS_FOR_REALS)
    find_path(NYXML_FAST_FLOAT_INCLUDE_DIR fast_float/fast_float.h)
    if(NOT NYXML_FAST_FLOAT_INCLUDE_DIR)
        message(FATAL_ERROR "This standard library has no std::from_chars for reals: please install fast_float (libfast-float-dev)")
    endif()
endif()

# nyxml_compile_options(<target>): what every target of this tree is compiled with, and none of what an application is asked to use.

function(nyxml_compile_options target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 17
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-qual -Wformat=2)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU") # what clang++ does anyway: nobody replaces single functions of the library
        target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    endif()
    if(NOT NYXML_HAS_FROM_CHARS_FOR_REALS)
        target_compile_definitions(${target} PRIVATE NYXML_WITH_FAST_FLOAT)
        target_include_directories(${target} SYSTEM PRIVATE "${NYXML_FAST_FLOAT_INCLUDE_DIR}")
    endif()
    if(NYXML_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(NYXML_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${NYXML_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${NYXML_SANITIZE})
    endif()
endfunction()

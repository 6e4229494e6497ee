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
    if(NYXML_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(NYXML_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${NYXML_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${NYXML_SANITIZE})
    endif()
endfunction()

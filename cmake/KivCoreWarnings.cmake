# Warnings for our own targets only; Qt's headers come in as system headers.
function(kivcore_set_warnings target)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
    endif()
endfunction()

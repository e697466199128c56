# qorfmt_warnings(TARGET): the project's warning set, as errors when QORFMT_WERROR is on.
function(qorfmt_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
                           -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
                           -Wnull-dereference -Wformat=2 -Wimplicit-fallthrough)
    if(QORFMT_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

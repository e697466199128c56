# qorfmt_warnings(TARGET): the project's warning set, as errors when QORFMT_WERROR is on.
# -Wnon-virtual-dtor is left out: dialog controllers live on their opener's stack and have public,
# non-virtual destructors by design; a delete through a base pointer is still caught by
# -Wdelete-non-virtual-dtor (part of -Wall).
function(qorfmt_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
                           -Woverloaded-virtual -Wcast-align
                           -Wnull-dereference -Wformat=2 -Wimplicit-fallthrough)
    if(QORFMT_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

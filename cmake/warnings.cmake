# vo_warnings(target): the warnings every target of this project is built with.
function(vo_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow=local -Wnon-virtual-dtor)
    if(VO_ABC_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# Run by CPack on the staged components: what the system looks for under /usr leads to the prefix under /opt.
set(prefix ${CPACK_PACKAGING_INSTALL_PREFIX})

# Links in `folder` for every file that a component has in the same folder of the prefix.
function(link_files component folder)
    set(stage ${CPACK_TEMPORARY_DIRECTORY}/${component})
    file(GLOB files RELATIVE ${stage}${prefix}/${folder} ${stage}${prefix}/${folder}/*)
    foreach(file ${files})
        file(MAKE_DIRECTORY ${stage}/usr/${folder})
        file(CREATE_LINK ${prefix}/${folder}/${file} ${stage}/usr/${folder}/${file} SYMBOLIC)
    endforeach()
endfunction()

foreach(folder bin share/man/man1 share/bash-completion/completions share/zsh/vendor-completions
        share/fish/vendor_completions.d)
    link_files(tools ${folder})
endforeach()

# Build files that find everything relative to themselves must not be reached through a link.
set(stage ${CPACK_TEMPORARY_DIRECTORY}/dev)
file(GLOB packages ${stage}${prefix}/*/cmake/vo_abc_io/vo_abc_ioConfig*.cmake)
foreach(package ${packages})
    get_filename_component(name ${package} NAME)
    string(REPLACE ${stage} "" installed ${package})
    file(WRITE ${stage}/usr/share/cmake/vo_abc_io/${name} "include(\"${installed}\")\n")
endforeach()
file(GLOB pc ${stage}${prefix}/*/pkgconfig/vo_abc_io.pc)
file(READ ${pc} text)
string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${prefix}" text "${text}")
file(WRITE ${stage}/usr/share/pkgconfig/vo_abc_io.pc "${text}")

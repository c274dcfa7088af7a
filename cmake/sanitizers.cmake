# Sanitizers apply to every target: a half-instrumented program reports what is not there.
if(VO_ABC_SANITIZE)
    add_compile_options(-fsanitize=${VO_ABC_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VO_ABC_SANITIZE})
endif()

# Warning flags shared by every target of the project.
function(lqtools_set_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

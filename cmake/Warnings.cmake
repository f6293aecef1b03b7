# Warnings for the project's own targets: call glyphor_warnings(target).
function(glyphor_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

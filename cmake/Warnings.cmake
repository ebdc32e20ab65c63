# brenu_warnings(TARGET): warnings; errors with the compilers that the tests are run with.
function(brenu_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8)
    # fopen is what the interface promises: paths are passed on unchanged.
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow -Werror)
  endif()
endfunction()

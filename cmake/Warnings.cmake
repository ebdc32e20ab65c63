# brenu_warnings(TARGET): warnings of all compilers, as errors.
function(brenu_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /WX /permissive- /utf-8)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow -Werror)
  endif()
endfunction()

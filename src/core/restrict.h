// Says of a pointer that nothing else in the function reaches what it points to, which compilers
// cannot see where a loop runs over two columns of one matrix.
#pragma once

#if defined(_MSC_VER) && !defined(__clang__)
#define BRENU_RESTRICT __restrict
#else
#define BRENU_RESTRICT __restrict__
#endif

#include "core/sparse/dense_tile.h"

#if defined(BRENU_AVX2_TILE) && defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif

namespace brenu {

namespace {

#ifdef BRENU_AVX2_TILE
bool HasAvx2() {
#if defined(_MSC_VER) && !defined(__clang__)
  int info[4];
  __cpuid(info, 0);
  if (info[0] < 7) return false;
  __cpuid(info, 1);
  constexpr int kFma = 1 << 12;
  constexpr int kSavesExtendedState = 1 << 27;
  if ((info[2] & kFma) == 0 || (info[2] & kSavesExtendedState) == 0) return false;
  constexpr unsigned long long kWideRegisters = 6;
  if ((_xgetbv(0) & kWideRegisters) != kWideRegisters) return false;
  __cpuidex(info, 7, 0);
  constexpr int kAvx2 = 1 << 5;
  return (info[1] & kAvx2) != 0;
#else
  return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
#endif
}
#endif

}  // namespace

MultiplyTile BestMultiplyTile() {
#ifdef BRENU_AVX2_TILE
  static const bool hasAvx2 = HasAvx2();
  if (hasAvx2) return MultiplyTileAvx2;
#endif
  return MultiplyTileBaseline;
}

}  // namespace brenu

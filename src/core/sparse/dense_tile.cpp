#include "core/sparse/dense_tile.h"

#if defined(BRENU_WIDE_TILES) && defined(_MSC_VER) && !defined(__clang__)
#include <intrin.h>
#endif

namespace brenu {

namespace {

#ifdef BRENU_WIDE_TILES
struct WideRegisters {
  bool avx2 = false;
  bool avx512 = false;
};

// Of the processor, as far as the system keeps them.
WideRegisters FindWideRegisters() {
#if defined(_MSC_VER) && !defined(__clang__)
  int info[4];
  __cpuid(info, 0);
  if (info[0] < 7) return {};
  __cpuid(info, 1);
  constexpr int kFma = 1 << 12;
  constexpr int kSavesExtendedState = 1 << 27;
  if ((info[2] & kFma) == 0 || (info[2] & kSavesExtendedState) == 0) return {};
  constexpr unsigned long long kKept256 = 0x06;
  constexpr unsigned long long kKept512 = 0xE6;
  const unsigned long long kept = _xgetbv(0);
  __cpuidex(info, 7, 0);
  constexpr int kAvx2 = 1 << 5;
  constexpr int kAvx512 = 1 << 16;
  return {(kept & kKept256) == kKept256 && (info[1] & kAvx2) != 0,
          (kept & kKept512) == kKept512 && (info[1] & kAvx512) != 0};
#else
  return {__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"),
          __builtin_cpu_supports("avx512f") != 0};
#endif
}
#endif

}  // namespace

std::vector<MultiplyTile> MultiplyTiles() {
  std::vector<MultiplyTile> tiles = {MultiplyTileBaseline};
#ifdef BRENU_WIDE_TILES
  const WideRegisters has = FindWideRegisters();
  if (has.avx2) tiles.push_back(MultiplyTileAvx2);
  if (has.avx512) tiles.push_back(MultiplyTileAvx512);
#endif
  return tiles;
}

}  // namespace brenu

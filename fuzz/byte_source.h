#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "brenu/brenu.h"

namespace brenu::fuzz {

// Hostile arguments from the bytes of an input; zeros when they are used up.  Most values come
// from a few that make sense together, so that networks arise, some from the borders, and some are
// any bytes.
class ByteSource {
 public:
  ByteSource(const std::uint8_t* data, std::size_t size) : m_data(data), m_rest(size) {}

  bool IsEmpty() const { return m_rest == 0; }

  std::uint8_t Byte() {
    if (m_rest == 0) return 0;
    --m_rest;
    return *m_data++;
  }

  template <typename Value>
  Value Raw() {
    std::array<std::uint8_t, sizeof(Value)> bytes;
    for (std::uint8_t& b : bytes) b = Byte();
    Value value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  std::int32_t Index() {
    const std::uint8_t b = Byte();
    if (b < 200) return b % 12;
    if (b < 240) return b - 188;  // in networks from a file
    if (b < 246) return -1;
    if (b < 249) return std::numeric_limits<std::int32_t>::max();
    if (b < 252) return std::numeric_limits<std::int32_t>::min();
    return Raw<std::int32_t>();
  }

  double Number() {
    using Limits = std::numeric_limits<double>;
    static constexpr double kBorders[] = {0.0,
                                          -0.0,
                                          -1.0,
                                          1.0,
                                          1e-7,
                                          0.0059999,
                                          359.5959999,
                                          -9999.9,
                                          1e29,
                                          1e30,
                                          -1e300,
                                          2147483648.0,
                                          Limits::denorm_min(),
                                          Limits::max(),
                                          Limits::infinity(),
                                          -Limits::infinity(),
                                          Limits::quiet_NaN()};
    const std::uint8_t b = Byte();
    if (b < 160) return Raw<std::uint16_t>() / 100.0;
    if (b < 192) return Raw<std::int16_t>() / 10.0;
    if (b < 248) return kBorders[b % std::size(kBorders)];
    return Raw<double>();
  }

  // At most 127 bytes.
  std::string Name() {
    const std::uint8_t b = Byte();
    if (b < 240) return {static_cast<char>('A' + b % 10)};
    if (b < 244) return {};
    std::string name;
    if (b < 248) {
      name.assign(127, 'n');
      return name;
    }
    const std::size_t length = b < 252 ? b - 247U : Byte() % 128U;
    while (name.size() < length) name += static_cast<char>(Byte());
    return name;
  }

  PointData Point() {
    static constexpr std::int32_t kTypes[] = {0, 0, 0, 1, 10, 11, 11};
    PointData point{};
    const std::uint8_t b = Byte();
    if (b >= 250) {
      std::memset(point.name, b, sizeof point.name);  // no NUL at its end
    } else {
      const std::string name = Name();
      std::memcpy(point.name, name.data(), name.size());
    }
    point.type = b < 224 ? kTypes[b % std::size(kTypes)] : Raw<std::int32_t>();
    point.x = Number();
    point.y = Number();
    point.h = Number();
    return point;
  }

  ObsData Obs() {
    ObsData obs{0.0, -1.0, 0.0, -1.0};
    const std::uint8_t kinds = Byte();
    if ((kinds & 1) != 0) obs.distance = Number();
    if ((kinds & 2) != 0) obs.direction = Number();
    if ((kinds & 4) != 0) obs.heightDiff = Number();
    if ((kinds & 8) != 0) obs.azimuth = Number();
    return obs;
  }

  AdjParam Param() {
    AdjParam param{2.5, 0.005, 5e-6, 4, 20, 4, 5, 3, Byte() % 4};
    const std::uint8_t b = Byte();
    if (b < 128) return param;
    param.MO = Number();
    param.MS = Number();
    param.MR = Number();
    if (b < 192) return param;
    for (std::int32_t* field : {&param.Lvl1, &param.Lvl1Limit, &param.Lvl2, &param.Lvl2Limit,
                                &param.Limit, &param.format}) {
      *field = Raw<std::int32_t>();
    }
    return param;
  }

 private:
  const std::uint8_t* m_data;
  std::size_t m_rest;
};

}  // namespace brenu::fuzz

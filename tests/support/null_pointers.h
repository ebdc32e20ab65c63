#pragma once

#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>
#include <utility>

namespace brenu::testing {

// That the call fails with any one of its pointers null, and not with all of them in place.
template <typename Result, typename... Args>
void ExpectRefusesNull(std::type_identity_t<Result> failure, Result (*call)(Args...),
                       std::type_identity_t<Args>... args) {
  std::tuple<Args...> all(args...);
  const auto callWithout = [&](auto& argument) {
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(argument)>>) {
      const auto kept = std::exchange(argument, nullptr);
      EXPECT_EQ(std::apply(call, all), failure);
      argument = kept;
    }
  };
  std::apply([&](auto&... each) { (callWithout(each), ...); }, all);
  EXPECT_NE(std::apply(call, all), failure);
}

}  // namespace brenu::testing

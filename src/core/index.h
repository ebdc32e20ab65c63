// Indices of different things that must not be mixed, and tables that only the right one opens.
#pragma once

#include <cassert>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace brenu {

// The number of a thing of one kind, counted from 0; negative stands for none.
template <typename Kind>
class Index {
 public:
  constexpr Index() = default;
  constexpr explicit Index(std::int32_t number) : m_number(number) {}
  constexpr explicit Index(std::size_t number) : m_number(static_cast<std::int32_t>(number)) {}

  constexpr std::int32_t Number() const { return m_number; }
  constexpr std::size_t Position() const { return static_cast<std::size_t>(m_number); }
  constexpr bool IsNone() const { return m_number < 0; }

  constexpr auto operator<=>(const Index&) const = default;  // NOLINT(modernize-use-nullptr)
  constexpr Index& operator++() {
    ++m_number;
    return *this;
  }

 private:
  std::int32_t m_number = -1;
};

// The indices from `first` to the one before `end`, to be walked.
template <typename I>
class IndexRange {
 public:
  constexpr IndexRange(I first, I end) : m_first(first), m_end(end) {}
  constexpr explicit IndexRange(std::size_t count) : IndexRange(I(0), I(count)) {}

  class Iterator {
   public:
    constexpr explicit Iterator(I index) : m_index(index) {}
    constexpr I operator*() const { return m_index; }
    constexpr Iterator& operator++() {
      ++m_index;
      return *this;
    }
    constexpr bool operator==(const Iterator&) const = default;

   private:
    I m_index;
  };

  constexpr Iterator begin() const { return Iterator(m_first); }
  constexpr Iterator end() const { return Iterator(m_end); }
  constexpr std::size_t Size() const { return m_end.Position() - m_first.Position(); }

 private:
  I m_first, m_end;
};

// A value for each index from 0 on.
template <typename I, typename Value>
class Table {
 public:
  Table() = default;
  explicit Table(std::vector<Value> values) : m_values(std::move(values)) {}

  void Assign(std::size_t count, const Value& value) { m_values.assign(count, value); }
  void Reserve(std::size_t count) { m_values.reserve(count); }
  void Add(Value value) { m_values.push_back(std::move(value)); }
  void Clear() { m_values.clear(); }

  bool Has(I index) const { return !index.IsNone() && index.Position() < m_values.size(); }
  Value& operator[](I index) {
    assert(Has(index));
    return m_values[index.Position()];
  }
  const Value& operator[](I index) const {
    assert(Has(index));
    return m_values[index.Position()];
  }

  std::size_t Size() const { return m_values.size(); }
  bool IsEmpty() const { return m_values.empty(); }
  IndexRange<I> Indices() const { return IndexRange<I>(m_values.size()); }
  auto begin() { return m_values.begin(); }
  auto end() { return m_values.end(); }
  auto begin() const { return m_values.begin(); }
  auto end() const { return m_values.end(); }

 private:
  std::vector<Value> m_values;
};

}  // namespace brenu

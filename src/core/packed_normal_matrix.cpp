#include <algorithm>
#include <cassert>

#include "core/normal_matrix.h"
#include "core/packed_matrix.h"

namespace brenu {

namespace {

std::size_t At(std::int32_t unknown) {
  assert(unknown >= 0);
  return static_cast<std::size_t>(unknown);
}

class PackedNormalMatrix : public NormalMatrix {
 public:
  explicit PackedNormalMatrix(std::size_t order) : m_order(order) {}

  void Clear() override { m_elements.assign(PackedSize(m_order), 0.0); }
  void Reserve(std::size_t, std::size_t) override {}

  void Add(std::span<const Term> equation, double weight) override {
    for (const Term& row : equation) {
      const double scaled = row.coefficient * weight;
      for (const Term& column : equation) {
        if (row.unknown <= column.unknown) {
          m_elements[PackedIndex(At(row.unknown), At(column.unknown))] +=
              scaled * column.coefficient;
        }
      }
    }
  }

  double& Diagonal(std::int32_t unknown) override {
    return m_elements[PackedIndex(At(unknown), At(unknown))];
  }

  bool Solve(std::span<const double> b, std::span<double> x) override {
    if (!InvertPacked(m_elements, m_order)) return false;
    // x = Q b, column by column of the stored triangle.
    std::fill(x.begin(), x.end(), 0.0);
    const double* column = m_elements.data();
    for (std::size_t c = 0; c < m_order; ++c) {
      double sum = 0.0;
      for (std::size_t r = 0; r < c; ++r) {
        sum += column[r] * b[r];
        x[r] += column[r] * b[c];
      }
      x[c] += sum + column[c] * b[c];
      column += c + 1;
    }
    return true;
  }

  // Determinacy is asked of the sparse form only.
  std::vector<std::int32_t> SolveDetermined(std::span<const double>, std::span<double>) override {
    assert(false);
    return {};
  }
  void KeepFactors() override { assert(false); }
  void SolveAgain(std::span<const double>, std::span<double>) override { assert(false); }

  std::vector<double> CofactorsBetween(std::span<const std::vector<Term>>) override {
    assert(false);
    return {};
  }
  void MakeCofactors() override {}  // Solve has

  double Cofactor(std::int32_t i, std::int32_t j) override {
    return m_elements[PackedIndex(At(i), At(j))];
  }

  double QuadraticForm(std::span<const Term> function) override {
    double sum = 0.0;
    for (const Term& k : function) {
      for (const Term& m : function) {
        sum +=
            k.coefficient * m_elements[PackedIndex(At(k.unknown), At(m.unknown))] * m.coefficient;
      }
    }
    return sum;
  }

  void Multiply(std::span<const Term> function, std::span<double> product) override {
    for (std::size_t k = 0; k < function.size(); ++k) {
      product[k] = 0.0;
      for (const Term& m : function) {
        product[k] +=
            m_elements[PackedIndex(At(function[k].unknown), At(m.unknown))] * m.coefficient;
      }
    }
  }

  std::int32_t PlaceOf(std::int32_t unknown) const override { return unknown; }

 private:
  std::size_t m_order;
  std::vector<double> m_elements;  // N, after Solve N^-1
};

}  // namespace

std::unique_ptr<NormalMatrix> MakePackedNormalMatrix(std::int32_t unknowns) {
  return std::make_unique<PackedNormalMatrix>(At(unknowns));
}

}  // namespace brenu

// A small least-squares solver that shares no idea with the library's: orthogonalisation of the
// weighted equations (modified Gram-Schmidt) instead of normal equations, known values left out
// instead of held.
#pragma once

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace brenu::testing {

using Vector = std::vector<long double>;

inline long double Dot(const Vector& a, const Vector& b) {
  long double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
  return sum;
}

// Minimises |A x + l| for A given by columns, all rows divided by their standard errors.
class LeastSquares {
 public:
  LeastSquares(std::vector<Vector> columns, Vector l) : m_r(columns.size()) {
    Vector y;
    for (std::size_t j = 0; j < columns.size(); ++j) {
      m_r[j] = Vector(columns.size());
      for (std::size_t i = 0; i < j; ++i) {
        m_r[i][j] = Dot(columns[i], columns[j]);
        for (std::size_t k = 0; k < l.size(); ++k) columns[j][k] -= m_r[i][j] * columns[i][k];
      }
      m_r[j][j] = std::sqrt(Dot(columns[j], columns[j]));
      for (long double& element : columns[j]) element /= m_r[j][j];
      y.push_back(-Dot(columns[j], l));
      for (std::size_t k = 0; k < l.size(); ++k) l[k] += y[j] * columns[j][k];
    }
    m_pvv = Dot(l, l);
    x = std::move(y);
    for (std::size_t j = x.size(); j-- > 0;) {
      for (std::size_t k = j + 1; k < x.size(); ++k) x[j] -= m_r[j][k] * x[k];
      x[j] /= m_r[j][j];
    }
  }

  // The covariance of two linear functions of the unknowns, for unit variance: both are carried
  // through the transposed triangle.
  long double Covariance(const Vector& f, const Vector& g) const { return Dot(Carry(f), Carry(g)); }
  long double Pvv() const { return m_pvv; }

  Vector x;

 private:
  Vector Carry(Vector f) const {
    for (std::size_t i = 0; i < f.size(); ++i) {
      for (std::size_t k = 0; k < i; ++k) f[i] -= m_r[k][i] * f[k];
      f[i] /= m_r[i][i];
    }
    return f;
  }

  std::vector<Vector> m_r;  // upper triangle
  long double m_pvv;
};

}  // namespace brenu::testing

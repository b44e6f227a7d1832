#include "dsp/smoothing/polynomial_fit.hpp"

#include <Eigen/QR>
#include <algorithm>
#include <cstddef>

namespace velmora {
namespace {

using Vector = Eigen::VectorXd;
using Matrix = Eigen::MatrixXd;
using RowsMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

/// x = centre + scale * u, u in -1..1.
struct UnitScaling {
  double centre = 0.0;
  double scale = 1.0;
};

UnitScaling ScalingOf(std::span<const double> x) {
  const auto [lowest, highest] = std::minmax_element(x.begin(), x.end());
  const double half = (*highest - *lowest) / 2;
  return {*lowest + half, half > 0 ? half : 1.0};
}

// Chebyshev polynomials T0 .. Torder at u.
void FillBasis(double u, int order, double* row) {
  row[0] = 1.0;
  if (order > 0) {
    row[1] = u;
  }
  for (int k = 2; k <= order; ++k) {
    row[k] = 2.0 * u * row[k - 1] - row[k - 2];
  }
}

// The triangle R of the QR of the basis with y as its last column, built up block by block: the triangle
// so far stands for all the rows before, so a long trial needs no long matrix.
Matrix ReduceToTriangle(std::span<const double> x, std::span<const double> y, int order,
                        const UnitScaling& scaling) {
  const Eigen::Index columns = order + 2;
  const auto points = static_cast<Eigen::Index>(x.size());
  const Eigen::Index block = std::max<Eigen::Index>(1024, 2 * columns);
  Matrix triangle = Matrix::Zero(columns, columns);
  RowsMatrix rows;
  for (Eigen::Index first = 0; first < points; first += block) {
    const Eigen::Index count = std::min(block, points - first);
    rows.resize(columns + count, columns);
    rows.topRows(columns) = triangle;
    for (Eigen::Index k = 0; k < count; ++k) {
      const auto at = static_cast<std::size_t>(first + k);
      FillBasis((x[at] - scaling.centre) / scaling.scale, order, &rows(columns + k, 0));
      rows(columns + k, columns - 1) = y[at];
    }
    const Eigen::HouseholderQR<Matrix> qr{Matrix(rows)};
    triangle = qr.matrixQR().topRows(columns).triangularView<Eigen::Upper>();
  }
  return triangle;
}

// From Chebyshev polynomials of u to powers of x. Each Tk is carried along as its powers of x.
std::vector<double> InPowers(const Vector& chebyshev, const UnitScaling& scaling) {
  const auto terms = static_cast<std::size_t>(chebyshev.size());
  std::vector<long double> sum(terms, 0.0L);
  std::vector<long double> before(terms, 0.0L);  // T(k-1)
  std::vector<long double> now(terms, 0.0L);     // Tk
  now[0] = 1.0L;
  const long double centre = scaling.centre;
  const long double scale = scaling.scale;
  for (std::size_t k = 0; k < terms; ++k) {
    std::vector<long double> next(terms, 0.0L);
    const long double factor = k == 0 ? 1.0L : 2.0L;
    for (std::size_t p = 0; p <= k; ++p) {
      sum[p] += static_cast<long double>(chebyshev[static_cast<Eigen::Index>(k)]) * now[p];
      if (p + 1 < terms) {
        next[p + 1] += factor * now[p] / scale;
      }
      next[p] -= factor * centre * now[p] / scale + (k == 0 ? 0.0L : before[p]);
    }
    before = now;
    now = next;
  }
  return {sum.begin(), sum.end()};
}

}  // namespace

PolynomialFit FitPolynomial(std::span<const double> x, std::span<const double> y, int order) {
  const UnitScaling scaling = ScalingOf(x);
  const Matrix triangle = ReduceToTriangle(x, y, order, scaling);
  const Eigen::Index terms = order + 1;
  const Vector chebyshev = triangle.topLeftCorner(terms, terms)
                               .completeOrthogonalDecomposition()
                               .solve(triangle.col(terms).head(terms));
  PolynomialFit fit;
  Vector basis(terms);
  double squares = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    FillBasis((x[i] - scaling.centre) / scaling.scale, order, basis.data());
    fit.fitted.push_back(basis.dot(chebyshev));
    squares += (y[i] - fit.fitted.back()) * (y[i] - fit.fitted.back());
  }
  fit.meanSquaredError = squares / static_cast<double>(x.size());
  fit.coefficients = InPowers(chebyshev, scaling);
  return fit;
}

}  // namespace velmora

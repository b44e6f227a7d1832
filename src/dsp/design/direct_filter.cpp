#include "dsp/design/direct_filter.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "core/text/numbers.hpp"
#include "dsp/design/reflection.hpp"
#include "dsp/filters/filter_design.hpp"

namespace velmora {
namespace {

// Reflection coefficients by stepping down: all below 1 in size just when all roots lie inside the unit
// circle. (Oppenheim and Schafer, Discrete-Time Signal Processing, 11.7: Levinson's recursion backward.)
bool PolesInside(std::vector<double> a) {
  while (a.size() > 1) {
    const double k = a.back();
    if (!(std::abs(k) < 1)) {
      return false;
    }
    std::vector<double> shorter(a.size() - 1);
    for (std::size_t i = 0; i < shorter.size(); ++i) {
      shorter[i] = (a[i] - k * a[a.size() - 1 - i]) / (1 - k * k);
    }
    a = std::move(shorter);
  }
  return true;
}

double At(const std::vector<double>& of, std::size_t k) {
  return k < of.size() ? of[k] : 0.0;
}

double Sum(const std::vector<double>& of) {
  double sum = 0.0;
  for (const double value : of) {
    sum += value;
  }
  return sum;
}

// States of the transposed form, one fewer than coefficients, after an endless run of samples u.
std::vector<double> SteadyStates(const DirectFilter& filter, double u) {
  const std::size_t order = std::max(filter.b.size(), filter.a.size()) - 1;
  const double v = u * Sum(filter.b) / Sum(filter.a);
  std::vector<double> states(order + 1);
  for (std::size_t k = order; k >= 1; --k) {
    states[k - 1] = At(filter.b, k) * u - At(filter.a, k) * v + states[k];
  }
  return states;
}

template <typename Samples>
void Sweep(Samples first, Samples last, const DirectFilter& filter, std::vector<double> states) {
  const std::size_t order = states.size() - 1;
  for (; first != last; ++first) {
    const double x = *first;
    const double y = filter.b.front() * x + states[0];
    for (std::size_t k = 1; k <= order; ++k) {
      states[k - 1] = At(filter.b, k) * x - At(filter.a, k) * y + states[k];
    }
    *first = y;
  }
}

}  // namespace

std::vector<double> NumbersOf(std::string_view text) {
  constexpr std::string_view kBetween = " \t\r\n,;";
  std::vector<double> numbers;
  for (std::size_t at = text.find_first_not_of(kBetween); at != std::string_view::npos;) {
    const std::size_t end = std::min(text.find_first_of(kBetween, at), text.size());
    const std::string word(text.substr(at, end - at));
    if (!IsNumber(word)) {
      throw FilterDesignError("\"" + word + "\" is no number.");
    }
    numbers.push_back(Val(word));
    at = text.find_first_not_of(kBetween, end);
  }
  return numbers;
}

DirectFilter MakeDirectFilter(std::vector<double> b, std::vector<double> a) {
  if (b.empty() || a.empty()) {
    throw FilterDesignError("Both lists of coefficients need at least one number.");
  }
  const double first = a.front();
  if (first == 0) {
    throw FilterDesignError("The first coefficient of a must not be 0.");
  }
  for (std::vector<double>* list : {&b, &a}) {
    for (double& value : *list) {
      value /= first;
    }
  }
  if (!PolesInside(a)) {
    throw FilterDesignError("The filter is not stable.");
  }
  return {.b = std::move(b), .a = std::move(a)};
}

void RunDirect(std::span<double> x, const DirectFilter& filter, RunDirection direction) {
  if (x.empty()) {
    return;
  }
  const std::size_t length = std::max(filter.b.size(), filter.a.size());
  if (direction == RunDirection::Forward) {
    Sweep(x.begin(), x.end(), filter, std::vector<double>(length));
    return;
  }
  const std::size_t padding = std::min(x.size() - 1, 3 * length);
  std::vector<double> run = ContinuedByReflection(x, static_cast<std::int64_t>(padding));
  Sweep(run.begin(), run.end(), filter, SteadyStates(filter, run.front()));
  Sweep(run.rbegin(), run.rend(), filter, SteadyStates(filter, run.back()));
  std::copy_n(run.begin() + static_cast<std::ptrdiff_t>(padding), x.size(), x.begin());
}

}  // namespace velmora

#include "events/contacts.hpp"

#include <cstddef>

namespace velmora {
namespace {

// Where the line from sample k to the next crosses the level that lies between them.
double Crossing(std::span<const double> signal, std::int64_t k, double level) {
  const double a = signal[static_cast<std::size_t>(k)];
  const double b = signal[static_cast<std::size_t>(k + 1)];
  return static_cast<double>(k) + (level - a) / (b - a);
}

std::vector<Contact> LoadedRuns(std::span<const double> signal, const ContactRule& rule) {
  std::vector<Contact> runs;
  bool loaded = false;
  const auto n = static_cast<std::int64_t>(signal.size());
  for (std::int64_t i = 0; i < n; ++i) {
    const double value = signal[static_cast<std::size_t>(i)];
    if (!loaded && value >= rule.on) {
      loaded = true;
      runs.push_back({.first = i, .on = i > 0 ? Crossing(signal, i - 1, rule.on) : 0.0, .whole = i > 0});
    } else if (loaded && value < rule.off) {
      loaded = false;
      runs.back().last = i - 1;
      runs.back().off = Crossing(signal, i - 1, rule.off);
    }
  }
  if (loaded) {
    runs.back().last = n - 1;
    runs.back().off = static_cast<double>(n - 1);
    runs.back().whole = false;
  }
  return runs;
}

}  // namespace

std::vector<Contact> FindContacts(std::span<const double> signal, const ContactRule& rule) {
  std::vector<Contact> contacts;
  for (const Contact& run : LoadedRuns(signal, rule)) {
    if (run.whole && run.last - run.first + 1 < rule.shortest) {
      continue;
    }
    if (!contacts.empty() && run.first - contacts.back().last - 1 < rule.shortestGap) {
      Contact& bridged = contacts.back();
      bridged.last = run.last;
      bridged.off = run.off;
      bridged.whole = bridged.whole && run.whole;
    } else {
      contacts.push_back(run);
    }
  }
  return contacts;
}

}  // namespace velmora

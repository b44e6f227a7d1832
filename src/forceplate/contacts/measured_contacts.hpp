#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "events/contacts.hpp"

namespace velmora {

/// A foot on the ground and what follows; seconds from the first sample of the force, newtons. Nothing where
/// the range hides it.
struct MeasuredContact {
  double on = 0.0;  // where the range begins, of a contact that it cuts
  double off = 0.0;
  double onPlace = 0.0;  // the same in samples: an abscissa need not be even
  double offPlace = 0.0;
  bool beganHere = true;  // within the range
  bool endedHere = true;
  double contactTime = 0.0;
  std::optional<double> swingTime{};   // to the next contact
  std::optional<double> strideTime{};  // from its beginning to that of the next
  double peak = 0.0;
  double mean = 0.0;
  double impulse = 0.0;  // N.s, by trapezoids from the first sample to the last

  [[nodiscard]] bool Whole() const { return beganHere && endedHere; }
};

/// `rate` in Hz. With `interpolate` on and off are where straight lines cross the thresholds, else the first
/// and the last sample.
std::vector<MeasuredContact> MeasureContacts(std::span<const double> force, const ContactRule& rule,
                                             double rate, bool interpolate);

/// What is known of whole contacts.
template <typename Value>
std::vector<double> OfWholeContacts(std::span<const MeasuredContact> contacts, const Value& value) {
  std::vector<double> values;
  for (const MeasuredContact& contact : contacts) {
    const std::optional<double> one = value(contact);
    if (contact.Whole() && one) {
      values.push_back(*one);
    }
  }
  return values;
}

}  // namespace velmora

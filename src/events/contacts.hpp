#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace velmora {

/// What a contact is: two thresholds, so that noise about one of them does not part it, and two times in
/// samples.
struct ContactRule {
  double on = 20.0;              // a contact begins with a value at or above it
  double off = 10.0;             // and has ended at one below it; not above `on`
  std::int64_t shortest = 1;     // contacts of fewer samples are none, unless the range cuts them
  std::int64_t shortestGap = 0;  // gaps of fewer samples part no contacts
};

/// Samples count from 0.
struct Contact {
  std::int64_t first = 0;  // samples of the contact, both inclusive
  std::int64_t last = 0;
  // Where straight lines between samples cross the thresholds before the first and behind the last; those
  // samples themselves where the range cuts the contact.
  double on = 0.0;
  double off = 0.0;
  bool whole = true;  // it began and ended within the range

  friend bool operator==(const Contact&, const Contact&) = default;
};

/// Contacts of a signal that rises with the load (feet on the ground, blows on a pad), in ascending order.
/// Those too short go first, and then gaps too short are bridged: a spike in a flight joins nothing.
/// What is no number neither begins nor ends a contact.
std::vector<Contact> FindContacts(std::span<const double> signal, const ContactRule& rule);

}  // namespace velmora

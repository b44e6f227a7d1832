#include "forceplate/contacts/measured_contacts.hpp"

#include <algorithm>
#include <cstddef>

namespace velmora {
namespace {

MeasuredContact MeasureOne(std::span<const double> force, const Contact& contact, double rate,
                           bool interpolate) {
  MeasuredContact of{.onPlace = interpolate ? contact.on : static_cast<double>(contact.first),
                     .offPlace = interpolate ? contact.off : static_cast<double>(contact.last),
                     .beganHere = contact.first > 0,
                     .endedHere = contact.last + 1 < static_cast<std::int64_t>(force.size())};
  of.on = of.onPlace / rate;
  of.off = of.offPlace / rate;
  of.contactTime = of.off - of.on;
  const auto samples = force.subspan(static_cast<std::size_t>(contact.first),
                                     static_cast<std::size_t>(contact.last - contact.first + 1));
  double sum = 0.0;
  double area = 0.0;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    sum += samples[i];
    if (i > 0) {
      area += (samples[i - 1] + samples[i]) / 2;
    }
  }
  of.peak = *std::max_element(samples.begin(), samples.end());
  of.mean = sum / static_cast<double>(samples.size());
  of.impulse = area / rate;
  return of;
}

}  // namespace

std::vector<MeasuredContact> MeasureContacts(std::span<const double> force, const ContactRule& rule,
                                             double rate, bool interpolate) {
  std::vector<MeasuredContact> measured;
  for (const Contact& contact : FindContacts(force, rule)) {
    measured.push_back(MeasureOne(force, contact, rate, interpolate));
  }
  for (std::size_t k = 0; k + 1 < measured.size(); ++k) {
    measured[k].swingTime = measured[k + 1].on - measured[k].off;
    if (measured[k].beganHere) {
      measured[k].strideTime = measured[k + 1].on - measured[k].on;
    }
  }
  return measured;
}

}  // namespace velmora

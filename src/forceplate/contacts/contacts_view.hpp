#pragma once

#include <cstdint>
#include <vector>

#include "forceplate/contacts/contacts_form.hpp"
#include "results/pictured_results.hpp"

namespace velmora {

/// The contacts as tables, and drawn on the force of one channel after the other.
class ContactsView : public PicturedResults {
 public:
  ContactsView(Workbench& workbench, const ContactsForm& form);

 private:
  void Draw();

  SampleRange range_;
  std::vector<ChannelContacts> found_;
  std::int32_t shown_ = 0;
};

}  // namespace velmora

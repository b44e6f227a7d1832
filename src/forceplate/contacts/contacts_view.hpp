#pragma once

#include <cstdint>
#include <vector>

#include "core/results/result_form.hpp"
#include "forceplate/contacts/contacts_form.hpp"

namespace velmora {

/// The contacts as tables, and drawn on the force of one channel after the other.
class ContactsView : public ResultForm {
 public:
  ContactsView(Workbench& workbench, const ContactsForm& form);

 private:
  void Draw();

  SampleRange range_;
  std::vector<ChannelContacts> found_;
  std::int32_t shown_ = 0;
};

}  // namespace velmora

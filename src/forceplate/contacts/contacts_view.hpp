#pragma once

#include "forceplate/contacts/contacts_form.hpp"

namespace velmora {

/// The contacts as tables, and drawn on the force of one channel after the other.
void ShowContacts(Workbench& workbench, const ContactsForm& form);

}  // namespace velmora

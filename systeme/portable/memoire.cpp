// SPDX-License-Identifier: MIT
// Nothing is known, so there is no limit.
#include "systeme/memoire.h"

#include <limits>

namespace premiers::systeme {

std::uint64_t memoire_des_groupes(const std::string& /*racine*/) {
  return std::numeric_limits<std::uint64_t>::max();
}

std::uint64_t memoire_libre() { return memoire_des_groupes(); }

void conseiller_grandes_pages(void* /*debut*/, std::size_t /*taille*/) {}

}  // namespace premiers::systeme

// SPDX-License-Identifier: MIT
#include "features/listing.h"

#include <algorithm>
#include <array>
#include <span>

#include "console/entrees.h"

namespace premiers {

void lister_rangs(Session& s, std::int64_t r1, std::int64_t r) {
  std::array<std::int64_t, 1024> lot{};
  while (r1 <= r) {
    const auto n = std::min(static_cast<std::int64_t>(lot.size()), r - r1 + 1);
    const std::span<std::int64_t> premiers(lot.data(), static_cast<std::size_t>(n));
    s.etat.Nprem.lire(r1, premiers);
    EntreesRangees entrees(s.sortie);
    for (const std::int64_t premier : premiers) entrees.ecrire_en_blocs(r1++, premier);
  }
}

}  // namespace premiers

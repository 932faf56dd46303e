// SPDX-License-Identifier: MIT
// What long work is busy with, for the line that tells of it.
#pragma once

#include <cstdint>

namespace premiers {
inline namespace suivi {

/// What a decomposition is busy with, in eight bytes: a signal handler reads them at once.
struct alignas(8) Etape {
  enum class Genre : std::uint8_t { aucun, courbes, moins_un, crible, algebre };

  Genre genre = Genre::aucun;
  std::uint8_t chiffres = 0;  ///< curves: the length of the factors they look for
  std::uint16_t nombre = 0;   ///< curves: how many; 0 where they go on without end
  std::uint32_t numero = 0;   ///< curves: which one, from 1 on
};

}  // namespace suivi
}  // namespace premiers

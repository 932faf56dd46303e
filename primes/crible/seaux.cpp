// SPDX-License-Identifier: MIT
// How a bucket gets its next block.
#include "primes/crible/seaux.h"

namespace premiers {

void Seaux::agrandir(Seau& s) {
  std::unique_ptr<Bloc> bloc;
  if (libres.empty()) {
    bloc = std::make_unique_for_overwrite<Bloc>();
  } else {
    bloc = std::move(libres.back());
    libres.pop_back();
  }
  s.blocs.push_back(std::move(bloc));
  s.ici = s.blocs.back()->data();
  s.fin = s.ici + s.blocs.back()->size();
}

}  // namespace premiers

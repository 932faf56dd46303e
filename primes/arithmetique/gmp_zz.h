// SPDX-License-Identifier: MIT
// NTL's integers seen by GMP, on which NTL is built: a view costs no copy.
#pragma once

#include <NTL/ZZ.h>
#include <NTL/ZZ_limbs.h>
#include <gmp.h>

namespace premiers {
inline namespace arithmetique {

static_assert(sizeof(NTL::ZZ_limb_t) == sizeof(mp_limb_t), "NTL is built on GMP");

/// |n| for GMP's functions, to read only, as long as n lives unchanged.
struct VueGmp {
  mpz_t z;
  explicit VueGmp(const NTL::ZZ& n) { mpz_roinit_n(z, NTL::ZZ_limbs_get(n), n.size()); }
  explicit VueGmp(NTL::ZZ&&) = delete;
};

/// A number that GMP writes.
struct EntierGmp {
  mpz_t z;
  EntierGmp() { mpz_init(z); }
  ~EntierGmp() { mpz_clear(z); }
  EntierGmp(const EntierGmp&) = delete;
  EntierGmp& operator=(const EntierGmp&) = delete;
};

/// x >= 0 as a ZZ.
inline NTL::ZZ en_zz(const EntierGmp& x) {
  NTL::ZZ n;
  NTL::ZZ_limbs_set(n, mpz_limbs_read(x.z), static_cast<long>(mpz_size(x.z)));
  return n;
}

}  // namespace arithmetique
}  // namespace premiers

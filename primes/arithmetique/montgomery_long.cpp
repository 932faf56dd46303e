// SPDX-License-Identifier: MIT
#include "primes/arithmetique/montgomery_long.h"

namespace premiers {

template EntierLong<2> MontgomeryLong<2>::produit(const Entier&, const Entier&) const;
template EntierLong<3> MontgomeryLong<3>::produit(const Entier&, const Entier&) const;
template EntierLong<4> MontgomeryLong<4>::produit(const Entier&, const Entier&) const;
template EntierLong<5> MontgomeryLong<5>::produit(const Entier&, const Entier&) const;
template EntierLong<6> MontgomeryLong<6>::produit(const Entier&, const Entier&) const;
template EntierLong<7> MontgomeryLong<7>::produit(const Entier&, const Entier&) const;
template EntierLong<8> MontgomeryLong<8>::produit(const Entier&, const Entier&) const;
template EntierLong<9> MontgomeryLong<9>::produit(const Entier&, const Entier&) const;
template EntierLong<10> MontgomeryLong<10>::produit(const Entier&, const Entier&) const;
template EntierLong<11> MontgomeryLong<11>::produit(const Entier&, const Entier&) const;

}  // namespace premiers

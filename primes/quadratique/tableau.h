// SPDX-License-Identifier: MIT
// Arrays for loops over whole vectors: they begin with a cache line.
//
// A vector of 64 bytes that lies across two lines takes two accesses, and that of every array that
// begins elsewhere does.
#pragma once

#include <cstddef>
#include <new>
#include <vector>

namespace premiers::quadratique {

template <class T>
struct ParLigne {
  using value_type = T;
  static constexpr std::align_val_t ligne{64};
  ParLigne() = default;
  template <class U>
  explicit(false) ParLigne(const ParLigne<U>&) {}
  T* allocate(std::size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), ligne)); }
  void deallocate(T* p, std::size_t) { ::operator delete(p, ligne); }
  friend bool operator==(const ParLigne&, const ParLigne&) { return true; }
};

template <class T>
using Tableau = std::vector<T, ParLigne<T>>;

}  // namespace premiers::quadratique

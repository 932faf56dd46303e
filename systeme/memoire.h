// SPDX-License-Identifier: MIT
// How much memory the process may still take.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace premiers::systeme {

/// How many more bytes the process can be given: the least of what the machine has available, what
/// its control groups leave, and what its limit of address space leaves. Asked anew at each call.
/// 2^64 - 1 where the system tells nothing.
std::uint64_t memoire_libre();

/// What the control group of the process and those above it leave, of either version; 2^64 - 1 where
/// none sets a limit. `racine` is the folder that holds /proc and /sys: a test has its own.
std::uint64_t memoire_des_groupes(const std::string& racine = {});

/// Tells the system that this memory is better kept in large pages: advice, where it takes any.
void conseiller_grandes_pages(void* debut, std::size_t taille);

}  // namespace premiers::systeme

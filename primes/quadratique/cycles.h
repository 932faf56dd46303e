// SPDX-License-Identifier: MIT
// The cycles of the graph of the large primes: which relations multiply to one without large prime?
//
// A spanning tree of each component is grown breadth first, the first from the vertex 1. Each edge
// that is left over closes one cycle with the two ways from its ends up to where they meet, and
// these are a basis of all cycles (K. Paton, "An algorithm for finding a fundamental set of cycles
// of a graph", 1969). Breadth first makes the ways, and so the columns of the matrix, short.
//
// Cost: linear in the edges and in what comes out; 20 bytes for an edge or a vertex.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "primes/quadratique/scission.h"

namespace premiers::quadratique {

/// A basis of the cycles of the graph with these edges: each a list of indices of edges, as many
/// cycles as Graphe counts. `signe_de_vie`, if not empty, is called every few milliseconds.
std::vector<std::vector<std::uint32_t>> cycles_independants(
    const std::vector<GrandsPremiers>& aretes, const std::function<void()>& signe_de_vie = {});

}  // namespace premiers::quadratique

// SPDX-License-Identifier: MIT
// A random operator. He sits before the reference model, reads what it prints, sees what its table
// of primes holds, and answers each question with something that may hurt and that the model can
// answer within milliseconds; what he typed is the session that both programs are then to play.
#pragma once

#include <cstdint>
#include <string>

namespace differentiel {

/// The text of a random session; the same for the same seed. It goes through one to six features
/// and ends by opening the ranked listing, which shows how far the table has grown, and closing the
/// program.
std::string inventer_session(std::uint64_t graine);

}  // namespace differentiel

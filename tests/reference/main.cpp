// SPDX-License-Identifier: MIT
// The reference program: the plain model on the standard streams.
#include <chrono>
#include <iostream>
#include <thread>

#include "etat.h"

int main() {
  reference::Etat etat(std::cin, std::cout, [](int repetition) {
    if (repetition > 0) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  });
  return reference::menu(etat);
}

#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a program of the build `arm64`: qemu_arm64.sh PROGRAM [ARGUMENT...]
set -euo pipefail
racine=$(cd -P -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
# The C library is the cross compiler's, the rest is what scripts/arm64.sh has unpacked.
exec qemu-aarch64 -L /usr/aarch64-linux-gnu \
  -E "LD_LIBRARY_PATH=$racine/build/arm64-bibliotheques/usr/lib/aarch64-linux-gnu" "$@"

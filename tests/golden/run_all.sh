#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Plays all golden sessions, one after the other, up to the first that fails (run.sh).
# usage: run_all.sh PROGRAM FOLDER SECONDS
set -euo pipefail

ici=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
nombre=0
for tape in "$ici"/*.in; do
  session=$(basename -- "$tape" .in)
  nombre=$((nombre + 1))
  if ! "$ici/run.sh" "$session" "$@"; then
    echo "^^ $session"
    exit 1
  fi
done
echo "$nombre sessions"
((nombre > 0))

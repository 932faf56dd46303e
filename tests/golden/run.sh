#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Plays one golden session: NAME.in is typed into the program, which must answer NAME.out to the
# byte and end with status 1, the status of a session that the operator closed. Standard error must
# hold NAME.err, or nothing where there is no such file.
# usage: run.sh NAME PROGRAM FOLDER SECONDS   (the program's output is kept in FOLDER/NAME.out)
set -euo pipefail

session=$1 programme=$2 dossier=$3 limite=$4
ici=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
tape=$ici/$session.in attendu=$ici/$session.out
obtenu=$dossier/$session.out erreurs=$dossier/$session.err

for fichier in "$tape" "$attendu"; do
  if [[ ! -e $fichier ]]; then
    echo "half a pair: $fichier is missing"
    exit 2
  fi
done
mkdir -p -- "$dossier"

# A sanitizer ends the program with status 1 by itself: here it must be another one.
export ASAN_OPTIONS=${ASAN_OPTIONS:+$ASAN_OPTIONS:}exitcode=99
export UBSAN_OPTIONS=${UBSAN_OPTIONS:+$UBSAN_OPTIONS:}exitcode=99

statut=0
timeout --kill-after=5 "$limite" "$programme" <"$tape" >"$obtenu" 2>"$erreurs" || statut=$?

juste=oui
if ((statut != 1)); then
  juste=non
  echo "exit status $statut, expected 1"
  if ((statut == 124 || statut == 137)); then echo "(still running after $limite seconds)"; fi
fi
if ! cmp -s -- "$attendu" "$obtenu"; then
  juste=non
  echo "the output differs (- expected, + obtained; first 100 lines; \$ marks the end of a line):"
  # sed reads on to the end, so that no writer before it is cut off.
  diff -u --label "$attendu" --label "$obtenu" \
    <(cat -A -- "$attendu") <(cat -A -- "$obtenu") | sed -n 1,100p || true
fi
attendues=${attendu%.out}.err
[[ -e $attendues ]] || attendues=/dev/null
if ! cmp -s -- "$attendues" "$erreurs"; then
  juste=non
  echo "on standard error (- expected, + obtained):"
  diff -u --label expected --label obtained -- "$attendues" "$erreurs" | sed -n 1,50p || true
fi
[[ $juste == oui ]]

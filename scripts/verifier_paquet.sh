#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Packs the last commit twice, in two folders, with another time zone and language, and asks that
# both Debian packages and both source tarballs be the same to the byte. Then lintian reads the
# package, and it is installed, run and removed. Needs a repository, root (or sudo), and the packages
# dpkg-dev, lintian and man-db; `./test paquet` sees to these. It works in a folder of its own, which
# goes with it.
set -euo pipefail
# shellcheck source=scripts/outils.sh
source "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/outils.sh"

rate() { abandonner 1 "paquet: $*"; }
en_root() { if ((EUID == 0)); then "$@"; else sudo "$@"; fi; }

commit=$(git -C "$racine" rev-parse HEAD) # whatever is committed meanwhile
travail=$(mktemp -d)
chmod 755 "$travail" # apt's helpers read there
installe=non
nettoyer() {
  if [[ $installe == oui ]]; then en_root dpkg --purge premiers || true; fi
  rm -rf -- "$travail"
}
trap nettoyer EXIT

# empaqueter FOLDER: the last commit, built and packed there.
empaqueter() {
  local sources=$travail/$1/premiers batis=$travail/$1/batis
  mkdir -p -- "$sources" "$batis"
  git -C "$racine" archive "$commit" | tar -x -C "$sources"
  cmake -S "$sources" -B "$batis" -G Ninja -DCMAKE_BUILD_TYPE=Release -DPREMIERS_TESTS=OFF
  cmake --build "$batis"
  (cd -- "$batis" && cpack --config CPackConfig.cmake && cpack --config CPackSourceConfig.cmake)
}

# pareil PATTERN: the file of that name is the same in both folders.
pareil() {
  local fichiers
  mapfile -t fichiers < <(compgen -G "$travail/*/batis/$1")
  ((${#fichiers[@]} == 2)) || rate "expected two files $1, found ${#fichiers[@]}"
  cmp -- "${fichiers[@]}" || rate "two builds of one commit differ"
  sha256sum -- "${fichiers[0]}"
}

# Every file of the commit is in the tarball, and no other.
verifier_sources() {
  diff <(git -C "$racine" ls-tree -r --name-only "$commit" | sort) \
    <(tar -tzf "$1" | grep -v '/$' | sed 's,^[^/]*/,,' | sort) ||
    rate "the tarball does not hold the files of the commit"
}

# The program, from where it was installed: a session, its answer, its exit status.
essayer_programme() {
  local statut=0 sortie
  sortie=$(printf '1 360 0\n3 1 1000 1\n0\n' | /usr/bin/premiers) || statut=$?
  ((statut == 1)) || rate "the program ends with status $statut, expected 1"
  [[ $sortie == *'360 =  (2)^3 X (3)^2 X (5)'* ]] || rate "360 is not decomposed"
  [[ $sortie == *'Il y a  168  nombres premiers'* ]] || rate "the primes up to 1000 are not counted"
}

essayer_paquet() {
  local paquet=$1 fichier differents
  if dpkg-query -W premiers >/dev/null 2>&1; then rate "premiers is installed already"; fi
  dpkg-deb --fsys-tarfile "$paquet" | tar -xO ./usr/share/man/fr/man1/premiers.1.gz |
    gunzip >"$travail/premiers.1"
  [[ -z $(LC_ALL=C.UTF-8 man --warnings --encoding=UTF-8 --local-file "$travail/premiers.1" \
    2>&1 >/dev/null) ]] || rate "man has warnings about the page"

  installe=oui
  en_root dpkg --install "$paquet"
  essayer_programme
  differents=$(dpkg --verify premiers | grep -vE '/usr/share/(doc|man)/' || true) # may be left out
  [[ -z $differents ]] || rate "installed files differ: $differents"
  en_root dpkg --purge premiers
  installe=non
  while read -r fichier; do
    [[ ! -e $fichier ]] || rate "$fichier is left behind"
  done < <(dpkg-deb --fsys-tarfile "$paquet" | tar -t | sed -n 's,^\.\(/.*[^/]\)$,\1,p')
}

umask 022 # cpack passes it on into the package
TZ=UTC LC_ALL=C.UTF-8 empaqueter un
TZ=Asia/Tokyo LC_ALL=C empaqueter deux/avec/un/chemin/plus/long
mv -- "$travail/deux/avec/un/chemin/plus/long" "$travail/autre"

pareil 'premiers_*.deb'
pareil 'premiers-*.tar.gz'
verifier_sources "$travail"/un/batis/premiers-*.tar.gz

# In a container all work is root's; lintian wants to hear that it is meant.
lintian --allow-root --fail-on error,warning "$travail"/un/batis/premiers_*.deb ||
  rate "lintian complains"
essayer_paquet "$travail"/un/batis/premiers_*.deb
dire "paquet: the same bytes twice, nothing to complain of, installed, run and removed"

# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# For `./test arm64`: the libraries of another architecture, beside those of this machine.
#
# Debian's development packages cannot be installed for two architectures at once (libntl-dev for
# the one removes libntl-dev for the other), so they are only unpacked, into a folder of the build.
# apt is shown a machine of its own there, which is an arm64 one with nothing installed: the lists
# and the architectures of the real one stay as they are, and no root is needed.
paquets_arm64=(libgmp-dev libgmp10 libgf2x-dev libgf2x3 libntl-dev libpari-dev libgtest-dev)
# shellcheck disable=SC2154 # racine: scripts/outils.sh
depot_arm64=$racine/build/arm64-bibliotheques

apt_arm64() {
  local etat=$depot_arm64/apt
  mkdir -p -- "$etat"/{lists,cache}/partial
  : >"$etat/status"
  apt-get -qq -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o APT::Sandbox::User=root \
    -o Acquire::Retries=3 -o Acquire::Languages=none -o Dir::State="$etat" \
    -o Dir::State::lists="$etat/lists" -o Dir::State::status="$etat/status" \
    -o Dir::Cache="$etat/cache" "$@"
}

# deballer_arm64: fills the folder, once.
deballer_arm64() {
  [[ -e $depot_arm64/complet ]] && return
  type -P apt-get dpkg-deb >/dev/null || abandonner 3 "missing, and there is no apt-get: arm64 libraries"
  dire "unpacking for arm64: ${paquets_arm64[*]}"
  rm -rf -- "$depot_arm64"
  mkdir -p -- "$depot_arm64/paquets"
  apt_arm64 update || true # a source without arm64 is no reason to stop
  (cd -- "$depot_arm64/paquets" && apt_arm64 download "${paquets_arm64[@]}") ||
    abandonner 3 "apt-get could not download for arm64: ${paquets_arm64[*]}"
  local paquet
  for paquet in "$depot_arm64"/paquets/*.deb; do
    dpkg-deb -x "$paquet" "$depot_arm64" || abandonner 3 "cannot unpack $paquet"
  done
  : >"$depot_arm64/complet"
}

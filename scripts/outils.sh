# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What ./run and ./test share: installing what is missing, configuring, building.
# Whatever is said here goes to standard error, and nothing here reads standard input.

# The root of the repository; every path below starts from it, so both work from any folder.
racine=$(cd -P -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)

# Debian packages that the program needs; ./test adds those of each kind of test.
# shellcheck disable=SC2034
paquets_programme=(g++ cmake ninja-build libgmp-dev libntl-dev libpari-dev)

dire() { printf 'premiers: %s\n' "$*" >&2; }

# abandonner STATUS TEXT: 2 = the build failed, 3 = something is missing. Never 1, which is how the
# program itself ends when all went well.
abandonner() {
  dire "${@:2}"
  exit "$1"
}

# en_tete FILE: is this header in one of the usual places?
en_tete() {
  local dossier
  for dossier in /usr/include /usr/include/*-linux-gnu /usr/local/include; do
    [[ -e $dossier/$1 ]] && return
  done
  return 1
}

# present PACKAGE: is what it brings there? Looks at the thing itself, so a compiler or a library
# that came by another way than apt counts, and neither a network nor dpkg is needed.
present() {
  case $1 in
    g++) type -P g++ ;;
    ninja-build) type -P ninja ;;
    g++-aarch64-linux-gnu) type -P aarch64-linux-gnu-g++ ;;
    qemu-user) type -P qemu-aarch64 ;;
    clang) type -P clang++ ;;
    dpkg-dev) type -P dpkg-shlibdeps ;;
    man-db) type -P man ;;
    locales) [[ -d /usr/share/i18n/locales ]] ;;
    primecount-bin) type -P primecount ;;
    libgmp-dev) en_tete gmp.h ;;
    libntl-dev) en_tete NTL/ZZ.h ;;
    libpari-dev) en_tete pari/pari.h ;;
    libgtest-dev) en_tete gtest/gtest.h ;;
    libbenchmark-dev) en_tete benchmark/benchmark.h ;;
    libclang-rt-dev) compgen -G '/usr/lib/llvm-*/lib/clang/*/lib/*/libclang_rt.fuzzer*' ;;
    *) type -P "$1" ;;
  esac >/dev/null
}

# installer PACKAGE...: installs those that are missing, and does nothing where none is.
installer() {
  local paquet manquants=() comme_root=()
  for paquet in "$@"; do
    present "$paquet" || manquants+=("$paquet")
  done
  ((${#manquants[@]})) || return 0

  type -P apt-get >/dev/null || abandonner 3 "missing, and there is no apt-get: ${manquants[*]}"
  if ((EUID != 0)); then
    type -P sudo >/dev/null ||
      abandonner 3 "missing; install them as root: apt-get install ${manquants[*]}"
    comme_root=(sudo)
  fi

  dire "installing ${manquants[*]}"
  local apt=("${comme_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get -qq -o DPkg::Lock::Timeout=60 -o Acquire::Retries=3)
  local journal=$racine/build/installation.log
  # A list of packages that cannot be refreshed may still be good enough.
  (
    if type -P flock >/dev/null; then flock 8; fi # one at a time, whichever build wants it
    { "${apt[@]}" update || true; } >"$journal" 2>&1
    if ! "${apt[@]}" install -y --no-install-recommends "${manquants[@]}" >>"$journal" 2>&1; then
      cat "$journal" >&2
      abandonner 3 "apt-get could not install: ${manquants[*]}"
    fi
  ) 8>"$racine/build/.verrou-installation"
}

# configurer PRESET [OPTION...]: CMake's own step. It starts afresh where the build folder was made
# for another place, as happens to a checkout that was moved.
configurer() {
  local cache=$racine/build/$1/CMakeCache.txt neuf=()
  if [[ -e $cache ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$racine" "$cache"; then
    neuf=(--fresh)
  fi
  (cd -- "$racine" && cmake --preset "$@" "${neuf[@]}" >/dev/null) ||
    abandonner 2 "cmake --preset $1 failed"
}

# construire PRESET [OPTION...]: builds what is not up to date, and says nothing where all of it is.
construire() {
  local rien='ninja: no work to do\.|\[0/[0-9]+\] Re-checking globbed directories\.\.\.'
  (cd -- "$racine" && cmake --build --preset "$@" 2>&1) |
    { grep --line-buffered -vxE "$rien" || true; } ||
    abandonner 2 "the build of $1 failed"
}

# preparer NAME COMMAND...: runs one of the steps above with its output on standard error, nothing to
# read, and nobody else at work in build/NAME meanwhile.
preparer() {
  mkdir -p -- "$racine/build" || abandonner 2 "cannot write in $racine/build"
  (
    if type -P flock >/dev/null; then flock 9; fi
    "${@:2}"
  ) </dev/null >&2 9>"$racine/build/.verrou-$1"
}

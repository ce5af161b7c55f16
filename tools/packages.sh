# Sourced by run.sh and test.sh: the Debian packages that each needs, and their installing.
# shellcheck shell=bash

build_packages=(g++ cmake ninja-build qt6-base-dev libgl-dev libfreeimage-dev libsquish-dev
                libxcb1-dev zlib1g-dev libpng-dev libssl-dev libcli11-dev nlohmann-json3-dev
                libgdal-dev)
run_packages=(fonts-liberation libgl1-mesa-dri 7zip)
test_packages=(openssl libgtest-dev libbenchmark-dev xvfb xdotool openbox imagemagick x11-utils
               clang-format clang-tidy lld python3 ccache gdal-bin)
package_packages=(pandoc dpkg-dev lintian appstream desktop-file-utils)

# Installs those of the packages named that are missing; quick when none is.
need_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "Installing ${missing[*]} ..."
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq >/dev/null
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# What one checkout has compiled another need not: paths below the checkout count as relative, and
# precompiled headers are known by what is in them.
use_ccache() {
  command -v ccache >/dev/null || return 0
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD}
  export CCACHE_SLOPPINESS=pch_defines,time_macros
}

# tell_progress LOG: what a build says goes into LOG, and how far it has come is told: on one line of a
# terminal, elsewhere by a line now and then.
tell_progress() {
  local log=$1 line said=-60 shown=
  while IFS= read -r line; do
    printf '%s\n' "$line" >>"$log"
    [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
    shown="building, ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}"
    if [ -t 1 ]; then
      printf '\r\033[K%s' "$shown"
    elif [ $((SECONDS - said)) -ge 20 ]; then
      printf '%s\n' "$shown"
      said=$SECONDS
    fi
  done
  if [ -t 1 ] && [ -n "$shown" ]; then printf '\r\033[K'; fi
}

# configure_and_build PRESET TARGET...: tells how far it is, and what went wrong. No target is all.
configure_and_build() {
  local preset=$1 log=build/$1.log
  shift
  mkdir -p build
  use_ccache
  if ! cmake --preset "$preset" >"$log" 2>&1 ||
    ! cmake --build "build/$preset" --target "${@:-all}" 2>&1 | tell_progress "$log"; then
    grep -E 'error|Error|FAILED' "$log" | head -40 >&2 || true
    echo "The build failed; the whole log is in $log" >&2
    return 1
  fi
}

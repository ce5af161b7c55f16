#!/usr/bin/env bash
# Builds Vardenix, makes the sample theater when there is none yet, and opens the editor on it;
# with no display it opens the theater without a window and says where the pictures are.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

echo "Vardenix: installing what is missing, building, and opening the sample theater."
need_packages "${build_packages[@]}" "${run_packages[@]}"
configure_and_build release

bin=build/release/bin
sample=build/sample
if [ ! -e "$sample/theater.lst" ]; then
  "$bin/make_sample_theater" "$sample"
fi
# The start-up window offers the theaters of the install that this file names.
if [ ! -e "$bin/registry.ini" ]; then
  "$bin/make_sample_theater" "$sample" --register-only --registry "$bin/registry.ini"
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$bin/vardenix" "$@"
fi
exec tools/tour.sh "$bin" "$sample"

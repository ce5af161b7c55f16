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
theater=$sample/terrdata/sorrelund
# The start-up window offers the theaters of the install that registry.ini names.
if [ ! -e "$sample/theater.lst" ] || [ ! -e "$bin/registry.ini" ]; then
  echo "making the sample theater"
  "$bin/make_sample_theater" "$sample" --registry "$bin/registry.ini"
fi

# The first start begins with the island in view; later ones with what the last one left.
if [ ! -e "$bin/VX.ini" ]; then
  "$bin/vardenix-cli" settings --theater-index 1 --x 95 --y 95 --zoom 6 >/dev/null
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$bin/vardenix" "$@"
fi
echo "There is no display, so the theater is opened without a window:"
mkdir -p build/pictures
begin=$(date +%s%N)
"$bin/vardenix-cli" info --theater "$theater"
"$bin/vardenix-cli" check --theater "$theater" && echo "every post has a tile of the catalogue"
echo "The height picture:"
"$bin/vardenix-cli" preview build/pictures/heights.png --theater "$theater"
echo "The map:"
view=(--x 20 --y 40 --zoom 20 --grid 10)
"$bin/vardenix-cli" render build/pictures/map.png --theater "$theater" "${view[@]}"
echo "A copy of the terrain, a lake painted on it, and the map of that:"
mkdir -p build/copy
"$bin/vardenix-cli" save-as build/copy/theater.l2 --theater "$theater"
copy=(--l2 build/copy/theater.l2 --bin "$theater/texture/texture.bin"
      --map "$theater/terrain/theater.map" --dds "$theater/texture/texture")
"$bin/vardenix-cli" fill 120 74 134 80 --tile 0 --elevation 300 "${copy[@]}"
"$bin/vardenix-cli" render build/pictures/painted.png "${copy[@]}" "${view[@]}"
echo "The copy's other levels and far tiles, and one of them as a picture:"
cp "$theater"/terrain/theater.[LOlo][01345] build/copy
mkdir -p build/copy/texture
cp "$theater"/texture/[Tt]exture.bin build/copy/texture/texture.bin
copy=(--l2 build/copy/theater.l2 --bin build/copy/texture/texture.bin
      --map "$theater/terrain/theater.map" --dds "$theater/texture/texture")
"$bin/vardenix-cli" rebuild --far "${copy[@]}"
"$bin/vardenix-cli" far-tile 5000 build/pictures/fartile.png "${copy[@]}"
echo "A copy that becomes a piece of the world, from maps that are drawn for it:"
world=$PWD/build/world
rm -rf "$world"
"$bin/make_sample_world" "$world"
cp -r "$theater" "$world/theater"
on_world() { XDG_DATA_HOME=$world/data "$bin/vardenix-cli" "$@" --theater "$world/theater"; }
on_world place import "$world/theater.place"
on_world heights import "$world/elevations.tif"
on_world tiles import "$world/landcover.tif" --table "$world/landcover.table"
on_world features import "$world"/{coast,towns,ways}.geojson --out "$world/land.tdf"
on_world render build/pictures/world.png --x 30 --y 30 --zoom 20 --grid 10 --features "$world/land.tdf"
echo "It took $((($(date +%s%N) - begin) / 1000000)) ms."

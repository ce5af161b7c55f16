#!/usr/bin/env bash
# world_pictures.sh [PROGRAM_FOLDER [SAMPLE]]: makes the pictures of "From a map to a theater" in
# docs/manual.md again, by its steps, with a built program and the sample theater.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "${1:-build/release/bin}")
sample=$(realpath "${2:-build/sample}")
out=$PWD/docs/pictures
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_DATA_HOME=$work/data
world=$work/world
cp -r "$sample/terrdata/sorrelund" "$work/theater"

on() { "$bin/vardenix-cli" "$@" --theater "$work/theater"; }
# picture NAME OPTION...: half of the theater.
picture() {
  on render "$work/map.png" --x 80 --y 90 --zoom 12 --grid 10 "${@:2}"
  convert "$work/map.png" -strip -resize 640 -quality 80 "$out/$1"
}

"$bin/make_sample_world" "$world"
on place import "$world/theater.place"
picture WorldBefore.jpg
on heights import "$world/elevations.tif"
picture WorldHeights.jpg --layers relief,bare,contours --contour-step 1000
on tiles import "$world/landcover.tif" --table "$world/landcover.table"
picture WorldCover.jpg
on features import "$world"/{coast,towns,ways}.geojson --out "$world/land.tdf"
picture WorldFeatures.jpg --layers relief --features "$world/land.tdf"

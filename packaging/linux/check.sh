#!/usr/bin/env bash
# Tries the package of package.sh in a clean root of Debian 12: an older version is installed, both programs are
# used by a plain user who has nothing but a home, the package is updated and removed, and nothing stays behind
# but what is the user's. Needs to be root, and a mirror. Pictures of the windows are left in out/check.
set -euo pipefail
cd "$(dirname "$0")/../.."
. tools/packages.sh
need_packages mmdebstrap xvfb xdotool imagemagick dpkg-dev

package=$(realpath "${1:-$(ls -t out/vardenix_*.deb | head -1)}")
pictures=$PWD/out/check
sample=$PWD/build/package/sample
work=$(mktemp -d)
root=$work/root
screen=:$((90 + RANDOM % 1000))
mkdir -p "$pictures"
finish() {
  kill "${server:-0}" 2>/dev/null || true
  umount "$root/proc" 2>/dev/null || true
  rm -rf --one-file-system "$work"
}
trap finish EXIT

say() { echo "== $*"; }
fail() { echo "check.sh: $*" >&2; exit 1; }
in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
as_maker() {
  chroot --userspec=maker:maker "$root" env -i PATH=/usr/bin:/bin HOME=/home/maker LC_ALL=C.UTF-8 DISPLAY="$screen" \
    QT_QPA_PLATFORM=xcb "$@"
}
# All files but what the system itself keeps about packages.
files() {
  (cd "$root" && find . -xdev \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp -o -path ./home \
    -o -path ./var/lib/dpkg -o -path ./var/lib/apt -o -path ./var/cache -o -path ./var/log -o -path ./run \) -prune \
    -o -print | sort)
}
# Waits for a window of that name as long as the program lives.
wait_for_window() {
  while kill -0 "$editor" 2>/dev/null; do
    DISPLAY=$screen xdotool search --onlyvisible --name "$1" >/dev/null 2>&1 && return
    sleep 0.2
  done
  fail "the editor ended before its window '$1' came"
}
picture() { DISPLAY=$screen import -window root "$pictures/$1.png"; }

say "an older version of the same package"
dpkg-deb -R "$package" "$work/older"
sed -i 's/^Version: .*/Version: 3.0.0/' "$work/older/DEBIAN/control"
dpkg-deb -b "$work/older" "$work/older.deb" >/dev/null

say "a clean root"
mmdebstrap --quiet --variant=minbase bookworm "$root"
mount -t proc proc "$root/proc"
in_root useradd --create-home --shell /bin/bash maker
cp "$package" "$root/tmp/newer.deb"
cp "$work/older.deb" "$root/tmp/older.deb"
in_root apt-get update -qq
in_root apt-get satisfy -qq --no-install-recommends "$(dpkg-deb -f "$package" Depends), xkb-data, fonts-liberation" >"$work/apt.log" 2>&1 ||
  { cat "$work/apt.log" >&2; fail "what the package depends on cannot be installed"; }
files >"$work/before"

say "install"
in_root dpkg -i /tmp/older.deb >/dev/null
[ "$(in_root dpkg-query -W -f='${Version}' vardenix)" = 3.0.0 ]
[ -e "$sample/theater.lst" ] || build/package/bin/make_sample_theater "$sample" --posts 128 --force
cp -r "$sample" "$root/home/maker/install"
in_root chown -R maker:maker /home/maker
theater=$(cd "$root" && dirname "$(dirname "$(find home -iname theater.l2 -path '*terrain*' | head -1)")")

say "the command line, as a plain user"
as_maker vardenix-cli --version
as_maker vardenix-cli info --theater "/$theater" >"$work/info"
as_maker vardenix-cli check --theater "/$theater"
as_maker vardenix-cli render /home/maker/map.png --theater "/$theater" --layers grid,heights
as_maker vardenix-cli set 10 10 --tile 1 --theater "/$theater"
as_maker vardenix-cli rebuild --far --theater "/$theater" >/dev/null
cp "$root/home/maker/map.png" "$pictures/map.png"

say "the editor, on a screen"
Xvfb "$screen" -screen 0 1366x768x24 >/dev/null 2>&1 &
server=$!
until DISPLAY=$screen xdotool getdisplaygeometry >/dev/null 2>&1; do sleep 0.2; done
as_maker vardenix "/$theater/terrain/theater.L2" &
editor=$!
# The question of the very first start; Enter means No.
wait_for_window Confirm
picture question
DISPLAY=$screen xdotool search --onlyvisible --name Confirm windowfocus --sync key Return
wait_for_window "Vardenix v"
picture editor
own=home/maker/.local/share/vardenix
# A desktop that logs out ends it like this; the settings are written.
kill -TERM "$editor"
wait "$editor" || true
[ -s "$root/$own/VX.ini" ] || fail "the settings are not in $own"
grep -q "theater" "$root/$own/Desk.ini" || fail "the theater is not remembered"
before=$(md5sum <"$root/$own/VX.ini")

say "update"
in_root dpkg -i /tmp/newer.deb >/dev/null
[ "$(in_root dpkg-query -W -f='${Version}' vardenix)" = "$(dpkg-deb -f "$package" Version)" ]
[ "$(md5sum <"$root/$own/VX.ini")" = "$before" ] || fail "the update changed the user's settings"
as_maker vardenix-cli get 10 10 --theater "/$theater" >/dev/null

say "the superuser leaves nothing beside the programs"
chroot "$root" env -i PATH=/usr/bin:/bin HOME=/root vardenix-cli settings >/dev/null
rm -rf "$root/root/.local"

say "remove"
in_root dpkg -P vardenix >/dev/null
files >"$work/after"
diff "$work/before" "$work/after" || fail "the package left something behind, or took something along"
[ -s "$root/$own/VX.ini" ] || fail "the user's own files went with the package"
echo "The package passed; pictures are in $pictures"

#!/usr/bin/env bash
# manual_pictures.sh [PROGRAM_FOLDER [SAMPLE [CONTROL_PLACES]]]: makes the pictures of docs/manual.md
# again, each window with its frame, from a built program and the sample theater (build/release/bin and
# build/sample when none are named; ./run.sh makes both). Controls are found by their names with the help
# of a program of the tests (build/tests/bin/control_places). Copies are worked on, on a screen of their own.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/packages.sh
need_packages "${run_packages[@]}" "${test_packages[@]}"
bin=$(realpath "${1:-build/release/bin}")
sample=$(realpath "${2:-build/sample}")
places=$(realpath "${3:-build/tests/bin/control_places}")
out=$PWD/docs/pictures
work=/tmp/maker # seen in the start-up window
children=()

finish() {
  for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
  rm -rf "$work"
}
mkdir "$work" # not over somebody else's
trap finish EXIT
mkdir "$work/program" "$work/home"
chmod 700 "$work/home"
cp -r "$sample" "$work/game"
cp "$bin"/{vardenix,vardenix-cli,vardenix-world,Loader,NoTile.jpg,libVardenix.so,libvardenix-toolkit.so} "$work/program"
cd "$work/program"
printf '[WINDOWS]\r\nONE_WINDOW=0\r\n' >Desk.ini
printf '[SOFTWARE\\Microprose\\Falcon\\4.0]\nbaseDir=%s/game\n' "$work" >registry.ini
./vardenix-cli settings --theater-index 1 --x 95 --y 95 --zoom 6 >/dev/null
# A map small enough for a page, and no question at the start.
sed -i -e 's/^GRID_SIZE=.*/GRID_SIZE=6\r/' -e 's/^TILE_SIZE=.*/TILE_SIZE=2\r/' -e 's/^ZOOM=.*/ZOOM=3\r/' \
  -e 's/^AUTO_CHECK_FOR_UPDATES=.*/AUTO_CHECK_FOR_UPDATES=0\r/' VX.ini

# until_true COMMAND...: waits for it, at most 20 seconds.
until_true() {
  local left=200
  until "$@" >/dev/null 2>&1; do
    [ $((left -= 1)) -gt 0 ] || { echo "manual_pictures: in vain: $*" >&2; return 1; }
    sleep 0.1
  done
}

Xvfb -displayfd 3 -noreset -screen 0 1280x900x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
children+=($!)
until_true test -s "$work/display"
DISPLAY=:$(cat "$work/display")
export DISPLAY HOME=$work/home XDG_RUNTIME_DIR=$work/home QT_QPA_PLATFORM=xcb
openbox 2>/dev/null &
children+=($!)
until_true sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep "window id"'
./vardenix &
children+=($!)

window_of() { xdotool search --onlyvisible --name "$1" | head -n 1 | grep .; }
# click TITLE X Y [BUTTON]: at a place in the window, in pixels of a screen of usual density.
click() {
  xdotool mousemove --window "$(window_of "$1")" "$2" "$3" click "${4:-1}"
  sleep 0.7 # until it is painted
}
# press TITLE CLASS CONTROL: in the middle of a control, wherever the layout of such a window puts it.
press() {
  local width height place
  read -r width height < <(xwininfo -id "$(window_of "$1")" |
    awk '/^  (Width:|Height:)/ { printf "%s ", $NF } END { print "" }')
  place=$(QT_QPA_PLATFORM=offscreen "$places" "$2" "$width" "$height" |
    awk -v name="$3" '$1 == name { print int($2 + $4 / 2), int($3 + $5 / 2) }')
  [ -n "$place" ] || { echo "manual_pictures: $2 has no $3" >&2; return 1; }
  click "$1" "${place% *}" "${place#* }"
}
keys() {
  xdotool key --delay 60 "$@"
  sleep 0.7
}
up() {
  until_true window_of "$1"
  sleep 1
}
# picture FILE TITLE [SIZE]: the window as it stands on the screen, with what lies over it, brought down
# to a size. A palette of colors suffices but for photographs.
picture() {
  local id left top width height l r t b
  id=$(window_of "$2")
  read -r left top width height < <(xwininfo -id "$id" |
    awk '/^  (Absolute|Width:|Height:)/ { printf "%s ", $NF } END { print "" }')
  read -r l r t b < <(xprop -id "$id" _NET_FRAME_EXTENTS | sed 's/.*= //; s/,//g')
  timeout 10 import -window root \
    -crop "$((width + l + r))x$((height + t + b))+$((left - l))+$((top - t))" "$work/shot.png"
  case $1 in
  *.jpg) convert "$work/shot.png" +repage -strip -resize "${3:-100%}" -quality 80 "$out/$1" ;;
  *) convert "$work/shot.png" +repage -strip +dither -colors 256 "PNG8:$out/$1" ;;
  esac
}

start='^Vardenix v[0-9.]+ - for'
panel='^\*?Vardenix v[0-9.]+( - L0/ELV MODE)?$'
map='^\*?Sorrelund$'
palette='^Tile Palette$'
details='^Tile Details$'

up "$start"
picture FrmStartUp.png "$start"
keys Return
up "$map"
timeout 5 xdotool windowactivate --sync "$(window_of "$panel")"
sleep 0.5
picture FrmVXMain.png "$panel"
for menu in 20 57 98; do # File, Edit, View
  click "$panel" "$menu" 10
  timeout 10 import -window root -crop 370x470+0+0 "$work/menu-$menu.png"
  keys Escape Escape
done
convert "$work"/menu-{20,57,98}.png +repage +append -strip +dither -colors 256 "PNG8:$out/Menus.png"
picture FrmVXTheaterPreview.png '^Theater Preview$'

keys F8
up "$palette"
xdotool windowsize "$(window_of "$palette")" 420 325
sleep 0.5
click "$palette" 165 85 5 # the wheel, one row down
click "$palette" 165 85   # the third of the first row
picture FrmVXTilePal.png "$palette"

for post in 150,210 171,210 192,210 171,189; do # a lake
  click "$map" "${post%,*}" "${post#*,}"
done
xdotool mousemove_relative 20 20
sleep 1.5 # until the read-out is up
picture FrmVXMap.jpg "$map"
keys r bracketright bracketright
xdotool mousemove --window "$(window_of "$map")" 215 115 mousedown 1
xdotool mousemove_relative 60 60 mousemove_relative 40 30
sleep 0.7
picture MapTools.jpg "$map"
keys Escape
xdotool mouseup 1
keys b bracketleft bracketleft
keys ctrl+h
up '^History$'
picture FrmVXHistory.png '^History$'
keys ctrl+h
keys F11
up '^\*?Sorrelund - Vardenix'
sleep 1 # until the map has filled its part
picture FrmVXDesk.jpg '^\*?Sorrelund - Vardenix' 70%
keys F11
up "$map"
click "$map" 171 210 3
keys Down Return
up "$details"
picture FrmVXTileDetails.png "$details"
keys Escape

press "$panel" FrmVXMain CmdHeightCol
up '^Height Colors$'
click '^Height Colors$' 100 130
picture FrmVXHeightCols.png '^Height Colors$'
keys Escape
press "$panel" FrmVXMain cmdAreasOptions
up '^Areas/Paths Options$'
picture FrmVXAreasPathsOptions.png '^Areas/Paths Options$'
keys Escape
click "$map" 171 210 3 # the MAP editor, at the color of a post
keys m
up '^\*?MapEditor'
sleep 5 # until it has flashed
picture frmMAPMain.png '^\*?MapEditor'
keys shift+F10
up '^Palete Details'
picture frmMAPDet.png '^Palete Details'
keys Escape alt+l
up '^Change all Alpha$'
picture frmMAPSetAlpha.png '^Change all Alpha$'
keys Escape alt+p
up "$map"
timeout 5 xdotool windowactivate --sync "$(window_of "$panel")"
keys alt+p a
up '^About Vardenix$'
picture FrmAbout.png '^About Vardenix$'
keys Escape

press "$panel" FrmVXMain cmdOpenBIN
editor='^\*?BIN Editor v[0-9.]+$'
up "$editor"
click "$editor" 90 135 # set 3
click "$editor" 581 186
picture FrmBINTileEdit.jpg "$editor"
click "$editor" 530 575 # Edit Tile
detail='^\*?Tile #: '
up "$detail"
picture FrmBINTileDet.jpg "$detail"
click "$detail" 560 170 # Edit an area
up '^Edit Area$'
picture FrmBINAreasEdit.png '^Edit Area$'
keys Escape
click "$detail" 560 362 # Edit a path
up '^Edit Path$'
picture FrmBINPathEdit.png '^Edit Path$'
keys Escape Escape
click "$editor" 973 192 # Options
up '^BIN Editor Options$'
picture FrmBINOPtions.png '^BIN Editor Options$'
keys Escape
# Pictures large enough for a look at the small window that comes up meanwhile.
mkdir "$work/new"
convert -size 2048x2048 plasma: -define dds:compression=dxt1 -define dds:mipmaps=0 "$work/new/10.dds"
for n in $(seq 11 25); do cp "$work/new/10.dds" "$work/new/$n.dds"; done
keys alt+a
up '^Select ONLY normal tiles'
xdotool type "$work/new"
keys Return
xdotool type "$(seq -f '"%g.dds"' -s ' ' 10 25)"
xdotool key Return
until_true window_of '^BIN Editor$'
sleep 0.3
picture FrmBINWorking.png '^BIN Editor$'
xdotool key Escape
sleep 2
click "$editor" 973 220 # Open Vardenix
up "$map"

keys ctrl+z ctrl+z ctrl+z ctrl+z

features='^Features$'
results='^Search Results$'
cat >"$work/sorrelund.tdf" <<'TDF'
AIRPORT 1 100,101 0 Kestrel Field
AIRPORT 1 107,108 0 Nordhavn
LABEL 1 104,98 0 Munster Bay
CITY 5 100,104 104,104 105,107 102,108 100,106 0
COAST 6 95,96 98,97 100,96 104,98 108,97 113,99 0
RIVER 5 97,113 99,109 98,105 101,102 103,96 0
ROAD 4 95,103 100,103.5 106,108 113,111 0
TDF
press "$panel" FrmVXMain chkShowTile # again: it goes
press "$panel" FrmVXMain chkShowFeatures
up "$features"
click "$features" 120 20
up '^Open terrain features file'
xdotool type "$work/sorrelund.tdf"
keys Return
for box in 30,75 30,143 262,143 30,233 262,233 30,323 262,323; do # all of them
  click "$features" "${box%,*}" "${box#*,}"
done
click "$features" 150 168 # larger airports
picture FrmVXFeatures.png "$features"
press "$panel" FrmVXMain chkShowFeatures # it goes

keys ctrl+f
up '^Search For a Tile'
xdotool type '>300'
click '^Search For a Tile' 165 70 # the neighbour above
click '^Search For a Tile' 470 85
xdotool type '>5000'
sleep 0.5
picture frmVXSearchOptions.png '^Search For a Tile'
keys Return
up "$results"
picture frmVXSearchResults.png "$results"
keys ctrl+r
up '^Replace Tiles'
xdotool type plains
keys Tab
xdotool type 'swamp, 17'
sleep 0.5
picture FrmVXReplace.png '^Replace Tiles'
keys Escape
keys alt+t # Tools
keys t
up '^Theater Statistics'
picture FrmVXStatistics.png '^Theater Statistics'
keys alt+F4
press "$panel" FrmVXMain chkShowResults # it goes

keys alt+t # Tools
keys b
up '^Rebuild Theater$'
picture rebuild-theater.png '^Rebuild Theater$'
keys Escape

keys ctrl+l
up '^Open$'
xdotool type theater.L0
keys Return
keys F2
picture FrmVXMain-L0ELV.png "$panel"

keys F2 F11
up '^\*?Sorrelund - Vardenix'
keys ctrl+Home
./vardenix-cli heights export "$work/land.tif" --theater "$work/game/terrdata/sorrelund" >/dev/null
keys alt+f i
up '^Import Elevations$'
xdotool type "$work/land.tif"
keys alt+s alt+u Down alt+w # stretched, in feet, the preview
sleep 1 # until it is painted
picture FrmImportElevations.jpg '^\*?Sorrelund - Vardenix' 70%
keys Escape alt+f p
up '^Place of the Theater$'
picture FrmTheaterPlace.png '^Place of the Theater$'
keys Escape F11

# An update: a second editor, and a service that stops in the middle of the archive until it may go on.
mkdir "$work/updated" "$work/update"
cp "$bin"/{vardenix,Loader,NoTile.jpg,libVardenix.so} VX.ini "$work/updated"
head -c 3000000 /dev/urandom >"$work/update/manual.pdf"
cat >"$work/update/What is new.txt" <<'TEXT'
Vardenix 3.1.0

* The palette shows the tiles of a set in the order of the catalogue.
* Heights of the finest elevations can be smoothed.
* Far tiles are made twice as fast.

The folder of your theater needs no change.
TEXT
(
  cd "$work/update"
  md5sum manual.pdf 'What is new.txt' |
    while read -r hash name; do printf 'COPY*%s*%s\r\n' "$name" "${hash^^}"; done >update.lst
  printf 'README*What is new.txt\r\n' >>update.lst
  7zz a -mx0 u.7z ./* >/dev/null
)
cat >"$work/service.py" <<'PYTHON'
import http.server, os, sys, time
work = sys.argv[1]
class Service(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        port = self.server.server_address[1]
        archive = self.path == "/u.7z"
        body = (open(work + "/update/u.7z", "rb").read() if archive else
                b"<title>Vardenix version check</title><body>#Patch*http://127.0.0.1:%d/u.7z*v3.1.0</body>" % port)
        half = len(body) * 3 // 5 if archive else len(body)
        self.wfile.write(b"HTTP/1.0 200 OK\r\nContent-Length: %d\r\n\r\n" % len(body) + body[:half])
        while archive and not os.path.exists(work + "/go on"):
            time.sleep(0.1)
        self.wfile.write(body[half:])
    def log_message(self, *words):
        pass
server = http.server.HTTPServer(("127.0.0.1", 0), Service)
with open(work + "/port.new", "w") as file:
    file.write(str(server.server_address[1]))
os.rename(work + "/port.new", work + "/port")
server.serve_forever()
PYTHON
python3 "$work/service.py" "$work" &
children+=($!)
until_true test -s "$work/port"
cd "$work/updated"
sed -i -e 's/^AUTO_CHECK_FOR_UPDATES=.*/AUTO_CHECK_FOR_UPDATES=1\r/' \
  -e "s|^VERSION CHECK=.*|VERSION CHECK=http://127.0.0.1:$(cat "$work/port")/v\r|" VX.ini
./vardenix &
children+=($!)
up '^New update'
keys y
up '^Update$'
picture frmDownload.png '^Update$'
touch "$work/go on"
up '^Read me$'
picture frmDispTxt.png '^Read me$'

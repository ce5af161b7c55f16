#!/usr/bin/env bash
# lint.sh [BUILD]: formatting, the rules of the house, and clang-tidy over the compile commands of
# BUILD (build/tests when none is named). Prints what it finds; exit 1 when it finds anything.
set -uo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/tests}
faults=0

fault() {
  echo "lint: $1"
  faults=$((faults + 1))
}

mapfile -t sources < <(git ls-files '*.cpp' '*.h')

clang-format --dry-run -Werror "${sources[@]}" || fault "run clang-format -i on the files above"

# Includes name the folder, and only windows, the program itself and the library that the command
# line opens for it know the toolkit.
# What moc makes of a class is compiled with the class.
if grep -nE '#include "(\.\./|.*\.cpp")' "${sources[@]}" | grep -vE '#include "moc_\w+\.cpp"$'; then
  fault "an include goes through .., or is of no header"
fi
if git ls-files 'src/*.cpp' 'src/*.h' | grep -vE '^src/(app/|[a-z]+/windows/|cli/toolkit/)' |
    xargs grep -nE '#include <Q'; then
  fault "the toolkit is included outside windows"
fi
tools/floors.py || fault "an include looks up, or at a neighbour, or a link is not what is included"
# Windows are apart: none includes another's header.
for folder in src/*/windows; do
  [ -d "$folder" ] || continue
  for file in "$folder"/[Ff]rm*.cpp "$folder"/[Ff]rm*.h; do
    [ -e "$file" ] || continue
    own=$(basename "${file%.*}")
    # A window's code may be parted into several files: FrmVXMainView.cpp is of FrmVXMain.
    for header in $(grep -oE '#include "[a-z]+/windows/[Ff]rm[A-Za-z]*' "$file" |
        sed 's|.*/||'); do
      [[ $own == "$header"* ]] || fault "$file includes another window, $header"
    done
  done
done
for file in "${sources[@]}"; do
  lines=$(wc -l <"$file")
  [ "$lines" -le 600 ] || fault "$file has $lines lines"
done
if git ls-files 'tests/*.cpp' | xargs grep -nE '\b(u?sleep(_for)? *\(|DISABLED_|GTEST_SKIP)'; then
  fault "a test sleeps or is skipped"
fi

mapfile -t ready < <(git ls-files '*.cpp')
tools/tidy.py "$build" "${ready[@]}" || fault "clang-tidy found the above"

[ "$faults" -eq 0 ] && echo "lint: ${#sources[@]} files, nothing to say"
exit $((faults > 0))

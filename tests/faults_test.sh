#!/usr/bin/env bash
# Faults of a real system: a full disk, folders and mounts that take nothing, sources that aren't what they seem. Each
# gives one clear line and the exit status 1, and every file that stays is whole.
# Usage: tests/faults_test.sh MAKE_SAMPLE SONDRIX_BATCH
# Exit status: 0 all is as it should be, 1 not so, 77 mounting isn't allowed here.
set -euo pipefail
export LC_ALL=C.UTF-8

make_sample=$1 sondrix_batch=$2
work=$(mktemp -d)
chmod 755 "$work"
cleanup() {
  umount "$work/disk" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
mkdir "$work/disk" "$work/sound"
if ! command -v setpriv >/dev/null || ! mount -t tmpfs -o size=4m,mode=777 tmpfs "$work/disk" 2>/dev/null; then
  echo "skipped: no file system can be mounted here"
  exit 77
fi
# A copy that a user without rights reaches.
cp "$sondrix_batch" "$work/batch"
cd "$work"

bad=0
fail() {
  echo "failed: $*" >&2
  sed 's/^/  /' "$work/said" >&2
  bad=1
}

# convert COMMAND...: what it says is kept, $status is how it ended; a run that hangs ends with 124.
convert() {
  status=0
  timeout 20 "$@" >"$work/said" 2>&1 || status=$?
}

# one_error LABEL: the last conversion said just one error, with a fault's number or a message of its own.
one_error() {
  [ "$status" -eq 1 ] || fail "$1: exit status $status"
  [ "$(grep -cE ':( ! |ошибка WriteF| \* specify)|: ошибка WriteF' "$work/said")" -eq 1 ] || fail "$1: not one error line"
}

# The clock's date and time stand in some outputs.
masked() { LC_ALL=C sed -E 's/[0-9]{2}-[A-Z][a-z]{2}-[0-9]{2},[0-9:]{8}//g' "$1"; }
is_sound() { cmp -s <(masked "$1") <(masked "$work/sound/$(basename "$1")"); }
# A table of an echogram and the points of a map keep what could be written.
is_start() { cmp -s -n "$(stat -c %s "$1")" "$1" "$work/sound/$(basename "$1")"; }

# whole LABEL FOLDER: each file there is a sound run's.
whole() {
  local file
  for file in "$2"/*; do
    case $(basename "$file") in
      filler) ;;
      lake.csv | map.txt) is_sound "$file" || is_start "$file" || fail "$1: $(basename "$file") is wrong" ;;
      *) is_sound "$file" || fail "$1: $(basename "$file") isn't whole" ;;
    esac
  done
}

"$make_sample" bulk sound/lake.sl2 --bytes 600000
"$make_sample" export sound/table.csv --bytes 300000
"$make_sample" log sound/boat.log --bytes 300000
"$make_sample" map sound/map.mp --bytes 300000
sources=(lake.sl2 table.csv boat.log map.mp)
for source in "${sources[@]}"; do
  options=(-s DistDiff=0 -s MakeGraf=0 -s DefLvl=10 -s MakeCut=1 --answer yes)
  ./batch -o sound "${options[@]}" "sound/$source" >said || fail "a sound run of $source"
done

# A disk with room for some bytes only; then, with room again, the same click.
for source in "${sources[@]}"; do
  for room in 0 40 160; do
    rm -rf disk/*
    cp "sound/$source" disk
    dd if=/dev/zero of=disk/filler bs=4096 status=none 2>/dev/null || true
    truncate -s "-${room}K" disk/filler
    convert ./batch -o disk "${options[@]}" "disk/$source"
    if [ "$status" -ne 0 ] || [ "$room" -eq 0 ]; then one_error "$source, $room KB"; fi
    whole "$source, $room KB" disk
    rm disk/filler
    convert ./batch -o disk "${options[@]}" "disk/$source"
    [ "$status" -eq 0 ] || fail "$source, with room again"
    whole "$source again" disk
    for file in disk/*; do is_sound "$file" || fail "$source again: $file"; done
  done
done

# Earlier outputs that nobody may write, then also in a folder without rights and on a mount that can only be read.
rm -rf disk/*
cp sound/* disk
chmod 444 disk/*
for rights in 777 555; do
  chmod "$rights" disk
  for source in "${sources[@]}"; do
    convert setpriv --reuid=65534 --regid=65534 --clear-groups ./batch -o disk "${options[@]}" "disk/$source"
    one_error "$source, rights of the folder $rights"
    cmp -s sound/lake.csv disk/lake.csv || fail "$source replaced what nobody may write"
  done
done
mount -o remount,ro disk
for source in "${sources[@]}"; do
  convert ./batch -o disk "${options[@]}" "disk/$source"
  one_error "$source, read-only mount"
done
for file in sound/*; do cmp "$file" "disk/$(basename "$file")" || fail "$file was lost"; done

# Sources that aren't what they seem, each under the name of every kind.
mkdir out odd
for source in "${sources[@]}"; do
  mkfifo "odd/$source"
  convert ./batch -o out "${options[@]}" "odd/$source"
  one_error "$source as a pipe"
  rm "odd/$source"
  ln -s "$source" "odd/$source"
  convert ./batch -o out "${options[@]}" "odd/$source"
  one_error "$source as a loop of links"
  rm "odd/$source"
  rmdir out || fail "$source left something"
  mkdir out
done

# held SOURCE OPTION...: starts a run and halts it while it reads; resumed lets it go on to its end.
held() {
  ./batch -o out -s MakeGraf=0 "${@:2}" "odd/$1" >said 2>&1 &
  run=$!
  while kill -0 "$run" 2>/dev/null; do
    read=$(awk '/^rchar/ { print $2 }' "/proc/$run/io" 2>/dev/null || echo 0)
    [ "${read:-0}" -lt 3000000 ] || break
  done
  kill -STOP "$run" || fail "$1 was too quick to be held"
}
resumed() {
  kill -CONT "$run" || true
  status=0
  wait "$run" || status=$?
}

# Sources that lose their second half while they are read, or are written anew; outputs whose folder goes.
"$make_sample" bulk odd/lake.sl2 --bytes 3000000000 --sparse
"$make_sample" export odd/table.csv --bytes 60000000
"$make_sample" log odd/boat.log --bytes 60000000
"$make_sample" map odd/map.mp --bytes 60000000
for source in "${sources[@]}"; do
  for away in "mv out gone" "rm -r out"; do
    if [ "$source" = map.mp ]; then break; fi # its points lie beside it
    held "$source" -s ScanCut=900000
    $away
    [ "$source" != lake.sl2 ] || kill -INT "$run" # it's a long one
    resumed
    one_error "$source, $away"
    [ ! -e out ] || fail "$source, $away: the folder came back"
    rm -rf gone out
    mkdir out
  done
  held "$source"
  printf x | dd of="odd/$source" conv=notrunc status=none
  truncate -s "$(($(stat -c %s "odd/$source") / 2))" "odd/$source"
  resumed
  one_error "$source, cut while it is read"
done

# A run that is killed leaves the earlier table alone, and no other that looks whole.
rm -f out/* odd/lake.sl2
echo earlier >out/lake.csv
"$make_sample" bulk odd/lake.sl2 --bytes 3000000000 --sparse
held lake.sl2
kill -KILL "$run"
resumed
[ "$(cat out/lake.csv)" = earlier ] || fail "a killed run: the earlier table is gone"
[ "$(ls out)" = $'lake.csv\nlake.csv.part' ] || fail "a killed run left $(ls out)"

# Each signal that asks a program to end ends it in order, also inside a line without an end, in the first pass over a
# table, and in the search for the next frame; one that is ignored from the start stays so.
for source in "${sources[@]}"; do
  endless=odd/endless.${source#*.}
  cp "sound/$source" "$endless"
  truncate -s 90G "$endless"
  for signal in INT TERM HUP; do
    convert timeout --preserve-status -k 5 -s "$signal" 0.2 ./batch -o out -s MakeGraf=0 "$endless" sound/next.csv
    [ "$status" -eq 1 ] || fail "$source, SIG$signal: exit status $status"
    [ "$(grep -cE ' \* process(ing aborted by user| stopped)$' said)" -eq 1 ] || fail "$source, SIG$signal"
    ! grep -q next said || fail "$source, SIG$signal: the next source had its turn"
  done
  rm "$endless"
done
convert bash -c 'trap "" HUP; exec timeout -s HUP 0.1 "$@"' ignored ./batch -o out -s MakeGraf=0 odd/lake.sl2
[ "$status" -eq 124 ] || fail "SIGHUP that is ignored: exit status $status"

# Names: of 255 bytes, of which an output may be too long; of letters beyond the 8-bit code page.
long=$(printf 'n%.0s' {1..251})
rm -f out/*
cp sound/table.csv "odd/$long.csv"
convert ./batch -o out "${options[@]}" "odd/$long.csv"
if [ -e sound/table_bad.txt ]; then one_error "a long name"; fi
cmp "out/$long.txt" sound/table.txt || fail "a long name: $(ls out)"
cp sound/lake.sl2 "odd/$long.sl2"
convert ./batch -o out "${options[@]}" "odd/$long.sl2"
one_error "a long name of an echogram"
for name in "озеро 🐟" "$(printf 'n%.0s' {1..247})"; do
  for source in lake.sl2 table.csv; do
    cp "sound/$source" "odd/$name.${source#*.}"
    convert ./batch -o out "${options[@]}" "odd/$name.${source#*.}"
    [ "$status" -eq 0 ] || fail "$name"
  done
  cmp "out/$name.csv" sound/lake.csv || fail "$name: $(ls out)"
  cmp "out/$name.txt" sound/table.txt || fail "$name: $(ls out)"
done

# Each output in turn as a link to its source, to another file, and to none.
mkdir links
cp sound/* links
"$make_sample" bulk links/lake.sl2 --bytes 60000
cp links/lake.sl2 short.sl2
linked_options=("${options[@]}" -s MakeGraf=1 -s SaveGraf=1 -s TargetName=of)
for source in "${sources[@]}"; do
  original=sound/$source
  [ "$source" != lake.sl2 ] || original=short.sl2
  rm -rf made
  ./batch -o made "${linked_options[@]}" "links/$source" >said || fail "outputs of $source: $(cat said)"
  if [ "$source" = map.mp ]; then mv links/map.txt made; fi
  outputs=$(cd made && { find . -maxdepth 1 -type f; find . -path './echo/*' -print -quit; })
  [ "$source" = map.mp ] || [ "$(wc -l <<<"$outputs")" -ge 4 ] || fail "outputs of $source: $outputs"
  for output in $outputs; do
    for link in "ln" "ln -sr"; do
      rm -rf made links/map.txt
      mkdir -p made/echo
      place=made/$output
      [ "$source" != map.mp ] || place=links/$output
      $link "$PWD/links/$source" "$place"
      convert ./batch -o made "${linked_options[@]}" "links/$source"
      one_error "$source, $link to $output"
      cmp "links/$source" "$original" || fail "$source was overwritten through $output"
    done
    for target in other none; do
      rm -rf made links/map.txt
      mkdir -p made/echo
      echo mine >other
      ln -s "$PWD/$target" "$place"
      convert ./batch -o made "${linked_options[@]}" "links/$source"
      { [ "$status" -eq 0 ] && [ -f "$place" ] && [ ! -L "$place" ]; } || fail "$output of $source as a link to $target"
      { [ "$(cat other)" = mine ] && [ ! -e none ]; } || fail "$output of $source went through a link to $target"
    done
  done
done

# Standard streams that are closed or take nothing, and a limit to the length of a file.
rm -f out/* odd/lake.sl2
"$make_sample" bulk odd/lake.sl2 --bytes 8000000
./batch -o links "${options[@]}" odd/lake.sl2 >said || fail "a longer echogram"
./batch -v -o out "${options[@]}" odd/lake.sl2 <&- >&- 2>&- || fail "closed streams"
cmp out/lake.csv links/lake.csv || fail "closed streams: a report in the table"
status=0
./batch -o out "${options[@]}" sound/lake.sl2 2>said >/dev/full || status=$?
{ [ "$status" -eq 1 ] && grep -q 'standard output' said; } || fail "a full standard output: status $status"
for source in "${sources[@]}"; do
  rm -f out/*
  cp "sound/$source" out
  convert bash -c 'ulimit -f 8; "$@"' limited ./batch -o out "${options[@]}" "out/$source"
  one_error "$source, a limit to files"
  whole "$source, a limit to files" out
done
truncate -s 40G big.ini
convert ./batch --ini big.ini -o out sound/lake.sl2
{ [ "$status" -eq 2 ] && grep -q 'too large' said; } || fail "a settings file of 40 GB: status $status"

[ "$bad" -eq 0 ] || exit 1
echo "one clear line each time, and every file whole"

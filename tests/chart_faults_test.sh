#!/usr/bin/env bash
# The chart program on a real system's faults: no space left, odd and endless sources, sources that change while they
# are read, signals. Each gives one clear line, earlier files stay as they are, and nothing half-made is left.
# Usage: tests/chart_faults_test.sh MAKE_SAMPLE SONDRIX_CHART
# Exit status: 0 all is as it should be, 1 not so.
set -euo pipefail
export LC_ALL=C.UTF-8

make_sample=$1 chart=$2
work=$(mktemp -d)
cleanup() {
  umount "$work/disk" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
cd "$work"

bad=0
fail() {
  echo "failed: $*" >&2
  head -20 said >&2
  bad=1
}

# make COMMAND...: what it says is kept, $status is how it ended; a run that hangs ends with 124.
make() {
  status=0
  timeout 30 "$@" >said 2>&1 || status=$?
}
# one_error LABEL WORDS: the last run complained in one line, which holds the words; an output may then say
# that there is nothing for it.
one_error() {
  [ "$status" -eq 1 ] || fail "$1: exit status $status"
  [ "$(grep '^sondrix-chart: ' said | grep -vc 'not made: there are no soundings')" -eq 1 ] || fail "$1: not one error line"
  grep -q "^sondrix-chart: .*$2" said || fail "$1: not a word of \"$2\""
}
# The names of a folder, in one line.
names() { ls -A "$1" | tr '\n' ' '; }

outputs=(a.csv a.gpx a.xyz a.tif a.geojson a.shp a.kml a.gpkg a.json)
files=("${outputs[@]}" a.dbf a.shx a.prj a.cpg)
# arguments FOLDER OUTPUT...: sets $made to a call that makes these outputs there. The report holds their names.
arguments() {
  local output
  made=(env -C "$1" "$chart")
  for output in "${@:2}"; do
    case $output in
      *.json) made+=(--report "$output") ;;
      *) made+=(-o "$output") ;;
    esac
  done
  made+=("${sources[@]}" -j 1)
}
# earlier FOLDER: each file as a run before would have left it.
earlier() {
  local file
  rm -rf "${1:?}"/*
  for file in "${files[@]}"; do echo "an earlier $file" >"$1/$file"; done
}
is_earlier() { cmp -s "$1" <(echo "an earlier ${1##*/}"); }
# The same files, and no others.
is_same() { diff -qr "$1" "$2" >differs; }

"$make_sample" lake lake
sources=("$work"/lake/{skiff-20210612-1.sl2,kayak-20220618.gpx,dory-20200919.csv,yacht-20210815.log})
mkdir whole out disk
arguments whole "${outputs[@]}"
begin=${EPOCHREALTIME/./}
make "${made[@]}"
took=$((${EPOCHREALTIME/./} - begin))
[ "$status" -eq 0 ] || fail "a sound run"
[ "$(names whole)" = "$(printf '%s\n' "${files[@]}" | sort | tr '\n' ' ')" ] || fail "a sound run made $(names whole)"
arguments out "${outputs[@]}"
make "${made[@]::${#made[@]}-1}" 4
is_same whole out || fail "-j 4 gave other files than -j 1"

# No space left: a limit to the length of a file, then a disk with room for some bytes only.
for output in "${outputs[@]}"; do
  earlier out
  arguments out "$output"
  make bash -c 'ulimit -f 4; "$@"' limited "${made[@]}"
  [ "$output" = a.json ] || one_error "$output, a limit to files" "$output: not made: "
  for file in "${files[@]}"; do
    [ "$status" -eq 0 ] || is_earlier "out/$file" || fail "$output, a limit to files: $file was changed"
  done
  [ "$(names out)" = "$(names whole)" ] || fail "$output, a limit to files: left $(names out)"
done
if mount -t tmpfs -o size=24m tmpfs disk 2>/dev/null; then
  for room in 4 400; do
    for output in "${outputs[@]}"; do
      earlier disk
      arguments disk "$output"
      [ "$room" -lt "$(($(stat -c %s "whole/$output") / 1024))" ] || continue
      dd if=/dev/zero of=disk/filler bs=64k status=none 2>/dev/null || true
      truncate -s "-${room}K" disk/filler
      make "${made[@]}"
      one_error "$output, $room KB" "$output: not made: "
      rm disk/filler
      for file in "${files[@]}"; do is_earlier "disk/$file" || fail "$output, $room KB: $file was changed"; done
      [ "$(names disk)" = "$(names whole)" ] || fail "$output, $room KB: left $(names disk)"
    done
  done
else
  echo "left out: a full disk, since no file system can be mounted here"
fi
status=0
"$chart" lake/dory-20200919.csv 2>said >/dev/full || status=$?
one_error "a full standard output" "standard output takes no more"

# One source among 10,000 files that are none.
mkdir many
for i in {1..9999}; do printf '\x89PNG\0%s' "$i" >"many/$i.png"; done
cp lake/dory-20200919.csv many
make "$chart" many
[ "$status" -eq 0 ] || fail "10,000 files: exit status $status"
grep -q ' 9999 files left out' said && [ "$(wc -l <said)" -le 4 ] || fail "10,000 files: $(wc -l <said) lines"

# A line of 2 GB of a log, and shorter ones of a table and a GPX file. The sanitizers' programs need more room than any limit.
limit=262144
(ulimit -v "$limit"; "$chart" --version >said 2>&1) || limit=unlimited
length=2G
for begin in '$GPGGA,080000.00,' '55.1;37.2;4.5;' '<?xml version="1.0"?><gpx><wpt lat="'; do
  printf '%s' "$begin" >endless
  truncate -s "$length" endless
  make bash -c 'ulimit -v "$0"; "$@"' "$limit" "$chart" -j 1 endless
  one_error "a line without an end after $begin" "endless: "
  length=100M
done
rm endless

# A table of 100,000 columns.
{
  printf 'latitude,longitude,depth'
  printf ',x%.0s' {4..100000}
  for i in {10..19}; do
    printf '\n55.1%s,37.2%s,4.%s' "$i" "$i" "$i"
    printf ',0%.0s' {4..100000}
  done
  echo
} >wide.csv
make "$chart" wide.csv
{ [ "$status" -eq 0 ] && grep -q '^wide.csv: table, 10 soundings' said; } || fail "100,000 columns"

# A source that grows, shrinks or is replaced once some of it is read.
"$make_sample" bulk long.sl2 --bytes 3000000000 --sparse
sed 1d whole/a.csv >rows
cat whole/a.csv rows rows rows rows rows >long.csv
sed '/<\/gpx>/,$d' whole/a.gpx >long.gpx
for i in 1 2; do sed -n '/<trk>/,$p' whole/a.gpx | grep -v '</gpx>' >>long.gpx; done
echo '</gpx>' >>long.gpx
head -c 20000 whole/a.csv >other
for source in long.sl2 long.csv long.gpx; do
  for change in "mv other \$source" "printf x >>\$source" "truncate -s -1M \$source"; do
    rm -f out/*
    "$chart" -j 1 -o out/a.csv "$source" >said 2>&1 &
    run=$!
    read=0
    while kill -0 "$run" 2>/dev/null && [ "${read:-0}" -lt 2000000 ]; do
      { read -r _ read </proc/$run/io; } 2>/dev/null || break
    done
    kill -STOP "$run" || fail "$source was too quick to be held"
    if [[ $change == mv* ]]; then mv "$source" kept; fi
    eval "$change"
    # It's a long one, which would go on with the old file.
    [[ $source != long.sl2 || $change != mv* ]] || kill -TERM "$run"
    kill -CONT "$run"
    status=0
    wait "$run" || status=$?
    case "$source $change" in
      long.sl2\ mv*) one_error "$source, $change" interrupted ;;
      *mv*)
        [ "$status" -eq 0 ] || fail "$source, $change: exit status $status"
        mv out/a.csv replaced
        make "$chart" -o out/a.csv kept
        cmp -s <(cut -d, -f 1-4 out/a.csv) <(cut -d, -f 1-4 replaced) || fail "$source isn't as whole as it was"
        rm out/a.csv
        ;;
      *) one_error "$source, $change" "$source: it was changed while it was read" ;;
    esac
    [ -z "$(names out)" ] || fail "$source, $change: left $(names out)"
    if [[ $change == mv* ]]; then mv "$source" other && mv kept "$source"; fi
  done
done

# Signals at ten moments of a run. A killed one leaves its parts, which the next run takes away.
signals=(INT TERM HUP KILL INT TERM HUP KILL INT TERM)
arguments out "${outputs[@]}"
stopped=0
earlier out
for i in "${!signals[@]}"; do
  signal=${signals[i]}
  moment=$(awk -v took="$took" -v i="$i" 'BEGIN { print took * (i + 0.5) / 10 / 1e6 }')
  make timeout --preserve-status -s "$signal" "$moment" "${made[@]}"
  if is_same whole out; then
    earlier out
    continue
  fi
  stopped=$((stopped + 1))
  for file in "${files[@]}"; do is_earlier "out/$file" || fail "SIG$signal after $moment s: $file was changed"; done
  if [ "$signal" = KILL ]; then
    make "${made[@]}"
    is_same whole out || fail "the run after SIGKILL after $moment s: $(cat differs)"
    earlier out
  else
    one_error "SIG$signal after $moment s" "interrupted: no file was made"
    [ "$(names out)" = "$(names whole)" ] || fail "SIG$signal after $moment s: left $(names out)"
  fi
done
[ "$stopped" -ge 3 ] || fail "only $stopped runs were at work when their signal came"
make "${made[@]}"
is_same whole out || fail "the run after the signals: $(cat differs)"

[ "$bad" -eq 0 ] || exit 1
echo "one clear line each time, earlier files untouched; $stopped of ${#signals[@]} runs were stopped at work"

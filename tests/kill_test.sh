#!/usr/bin/env bash
# Programs killed at random moments: a second run gives the files of one that wasn't killed and leaves no other, and
# the settings are those of one closing or the other, whole.
# Usage: tests/kill_test.sh MAKE_SAMPLE SONDRIX_BATCH WINDOW_LOOP [COUNT]
#   WINDOW_LOOP  "" where the program with a window isn't built
#   COUNT        kills of each of the two, 20 unless given
# Exit status: 0 all is as it should be, 1 not so.
set -euo pipefail
export LC_ALL=C

make_sample=$1 sondrix_batch=$2 window_loop=$3 count=${4:-20}
export QT_LOGGING_RULES="*=false"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

fail() {
  echo "failed: $*" >&2
  exit 1
}

# killed SECONDS COMMAND...: ends the command at a moment up to so many seconds from its start; $was_alive tells
# whether it was still at work.
killed() {
  local moment
  moment=$(awk -v most="$1" -v seed="$RANDOM$RANDOM" 'BEGIN { srand(seed); print rand() * most }')
  shift
  "$@" >/dev/null 2>&1 &
  local process=$!
  sleep "$moment"
  was_alive=0
  ! kill -KILL "$process" 2>/dev/null || was_alive=1
  wait "$process" 2>/dev/null || true
}

# A sum for each file; the clock's date and time stand in the tracks.
files() {
  find "$1" -type f ! -name '*.plt' -printf '%P\0' | (cd "$1" && xargs -0 md5sum)
  sed -E 's/[0-9]{2}-[A-Z][a-z]{2}-[0-9]{2},[0-9:]{8}//g' "$1"/*.plt | md5sum
}

mkdir whole out
"$make_sample" bulk lake.sl2 --bytes 1000000
"$make_sample" export table.csv --bytes 2000000
"$make_sample" log boat.log --bytes 2000000
"$make_sample" map map.mp --bytes 2000000
# run FOLDER: the map's points lie beside the map.
run() {
  exec "$sondrix_batch" -o "$1" -s DistDiff=0 -s DefLvl=20 -s MakeCut=1 -s MakeGraf=1 -s SaveGraf=1 \
    "$1/lake.sl2" "$1/table.csv" "$1/boat.log" "$1/map.mp"
}
for folder in whole out; do
  cp lake.sl2 table.csv boat.log map.mp "$folder"
done
begin=${EPOCHREALTIME/./}
(run whole) >/dev/null
seconds=$(awk -v us="$((${EPOCHREALTIME/./} - begin))" 'BEGIN { print us / 1e6 }')
files whole | sort >whole.list
alive=0
for ((i = 0; i < count; i++)); do
  killed "$seconds" run out
  alive=$((alive + was_alive))
  (run out) >said 2>&1 || fail "the run behind kill $i: $(cat said)"
  files out | sort >out.list
  cmp -s whole.list out.list || fail "the files behind kill $i: $(diff whole.list out.list)"
done
[ "$alive" -gt 0 ] || fail "no run was alive when it was to be killed"
echo "$alive of $count runs of $seconds s were killed at work; each run behind gave the same $(wc -l <whole.list) files"

[ -n "$window_loop" ] || exit 0
mkdir settings
"$window_loop" close settings 1
cp settings/sondrix.ini a.ini
"$window_loop" close settings 2
cp settings/sondrix.ini b.ini
! cmp -s a.ini b.ini || fail "both closings wrote the same"
left=0
for ((i = 0; i < count; i++)); do
  killed 0.6 "$window_loop" close settings
  cmp -s settings/sondrix.ini a.ini || cmp -s settings/sondrix.ini b.ini || fail "the settings behind kill $i"
  [ "$(find settings -type f | wc -l)" -eq 1 ] || left=$((left + 1))
done
"$window_loop" close settings 2
[ "$(find settings -type f)" = settings/sondrix.ini ] || fail "left: $(ls settings)"
cmp settings/sondrix.ini b.ini || fail "the settings of the last closing"
echo "$count windows were killed, $left of them beside a half-written file, which the next closing took away; the settings were whole"

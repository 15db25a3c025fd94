#!/usr/bin/env bash
# The program with a window as a user has it: on a screen of its own, started from a folder with an ini file, one
# click on the start button, closed by a signal, which in a run stops that first. Outputs and settings are compared with the batch program's.
# Usage: tests/window_test.sh MAKE_SAMPLE SONDRIX_BATCH SONDRIX [PICTURE]
#   PICTURE  a PNG of the window at the end of the run is kept there
# Exit status: 0 all is as it should be, 1 not so, 77 a program for the screen isn't installed.
set -euo pipefail
export LC_ALL=C.UTF-8 LANG=en_US.UTF-8

make_sample=$1 sondrix_batch=$2 sondrix=$3 picture=${4:-}
for program in Xvfb xdotool ${picture:+import}; do
  if ! command -v "$program" >/dev/null; then
    echo "skipped: $program is not installed"
    exit 77
  fi
done

work=$(mktemp -d)
cleanup() {
  kill "${window:-}" "${screen:-}" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "failed: $*" >&2
  exit 1
}

# until_true SECONDS COMMAND...
until_true() {
  local tries=$(($1 * 20))
  shift
  for ((; tries > 0; tries--)); do
    ! "$@" >/dev/null 2>&1 || return 0
    sleep 0.05
  done
  return 1
}

cp "$sondrix" "$work/sondrix"
mkdir "$work/out" "$work/batch"
mkdir -m 700 "$work/run"
"$make_sample" demo "$work/lake.sl3"
export XDG_RUNTIME_DIR=$work/run XDG_CONFIG_HOME=$work

# In a picture the fields name no folder of this machine.
here=$work/
if [ -n "$picture" ]; then
  cd "$work"
  here=
fi

# The whole settings file but for two fields, which the run is to show.
cat >"$work/sondrix.ini" <<INI
[Main]
Source=${here}lake.sl3
TargetPath=${here}out/
MaxDiff=300
DistDiff=2
MaxGrad=5
DepthDiff=10
DefLvl=50
DefSlp=100
MaxProc=80
MakeCut=0
HideCut=0
SaveGraf=0
UseBeep=0
UseDcm=1
UseMet=0
UseRev=0
UseHead=1
UseXYZ=0
UseUTM=0
MakeGraf=1
EhoSens=0
DefLang=ENG
KeptByHand=yes
INI

# Without -noreset it shuts out the window for a moment, when the search for it was alone and ends.
Xvfb -noreset -displayfd 3 -screen 0 800x520x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
screen=$!
until_true 10 test -s "$work/display" || fail "the screen didn't start"
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb

"$work/sondrix" &
window=$!
until_true 10 xdotool search --onlyvisible --pid "$window" || fail "no window was shown"
id=$(xdotool search --onlyvisible --pid "$window" | head -n 1)
sleep 0.3
xdotool mousemove --window "$id" 26 467 click 1

# The report of the depths is the last file of a run.
until_true 60 test -s "$work/out/lake_bad.txt" || fail "the run didn't end"
sleep 0.5
[ -z "$picture" ] || import -window "$id" "$picture"
kill -TERM "$window"
until_true 10 bash -c "! kill -0 $window" || fail "the window didn't close"
wait "$window" || fail "the program ended with status $?"

"$sondrix_batch" -o "$work/batch" -s DistDiff=2 -s DefLvl=50 -s MakeGraf=1 "$work/lake.sl3" >/dev/null
for file in lake.csv lake_bad.txt; do
  cmp "$work/out/$file" "$work/batch/$file" || fail "$file differs from that of the batch program"
done
ini=$(tr -d '\r' <"$work/sondrix.ini")
for line in KeptByHand=yes DistDiff=2 DepthMP=0x1000 TargetName= UseEho=2 DefLang=ENG "Source=${here}lake.sl3"; do
  grep -qxF "$line" <<<"$ini" || fail "$line is missing in the settings: $ini"
done
echo "the same files as the batch program's, and the settings kept"

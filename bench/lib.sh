# shellcheck shell=bash
# Shared by the comparisons of whole programs; to be sourced behind scripts/setup.sh.

# micros COMMAND...: the wall time of a command in microseconds, in $elapsed.
micros() {
  local begin=${EPOCHREALTIME/./}
  "$@" >/dev/null
  elapsed=$((${EPOCHREALTIME/./} - begin))
}

# The middle value of the lines of standard input, in column $1.
median() { sort -g -k "$1,$1" | awk -v k="$1" '{ v[NR] = $k } END { m = int((NR + 1) / 2); print NR % 2 ? v[m] : (v[m] + v[m + 1]) / 2 }'; }

# in_turn FIGURES ROUNDS OURS OTHER: the names of two functions or commands, run in turn. Each round leaves a line in
# FIGURES: seconds of ours, seconds of the other, their ratio.
in_turn() {
  local round ours
  : >"$1"
  for ((round = 1; round <= $2; round++)); do
    micros "$3"
    ours=$elapsed
    micros "$4"
    awk -v c="$ours" -v r="$elapsed" 'BEGIN { printf "%.4f %.4f %.4f\n", c / 1e6, r / 1e6, c / r }' | tee -a "$1" >&2
  done
}

# make_sample_once FILE KIND [OPTION...]: a sample of an earlier run is used again.
make_sample_once() {
  local file=$1 kind=$2
  shift 2
  [ ! -e "$file" ] || return 0
  say "Making $(basename "$file")"
  "$build/samples/make-sample" "$kind" "$file.part" "$@"
  mv "$file.part" "$file"
}

machine_lines() {
  echo "machine      $(awk -F ': ' '/^model name/ { print $2; exit }' /proc/cpuinfo), $(nproc) cores, $(uname -sr)"
  echo "compiler     $(c++ --version | head -n 1)"
}

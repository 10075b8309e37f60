#!/usr/bin/env bash
# What run options cost a program they leave alone: the CRC-32 firmware on `velmora-cli run`
# plain and with each set of options, all back to back in each round so that machine noise
# falls on all alike. Checks that every run printed the expected CRC in the same number of
# cycles, and prints the best and median CPU time of each and their ratios to the plain run.
# Usage: bench/optioncost.sh [BUILD_DIR] [ROUNDS] [NAME=OPTIONS ...]
#   (default build/, 5 rounds, and the sets below: an undriven LCD, with and without its log,
#   and ten breakpoints the program never reaches)
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
rounds=${2:-5}
shift $(($# < 2 ? $# : 2))
cli=$build/src/cli/velmora-cli
fw=$top/bench/firmware
expected=$(cat "$fw/crc32.expected")
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

names=(plain)
options=("")
if [ $# -eq 0 ]; then
  set -- "lcd=--lcd 2x16" "lcd+log=--lcd 2x16 --device-log $tmp/devices.log" \
    "break=$(for a in 3FF0 3FF1 3FF2 3FF3 3FF4 3FF5 3FF6 3FF7 3FF8 3FF9; do printf -- '--break %s ' $a; done)"
fi
for set in "$@"; do
  names+=("${set%%=*}")
  options+=("${set#*=}")
done

# CPU seconds (user + system) of the child: unlike wall time, not stretched while other work
# on the machine has the core.
TIMEFORMAT='%3U %3S'
for ((r = 1; r <= rounds; r++)); do
  for i in "${!names[@]}"; do
    # shellcheck disable=SC2086
    { time "$cli" run --model ATmega328P --clock 16 ${options[$i]} "$fw/crc32.hex" > "$tmp/out" 2> "$tmp/err"; } 2> "$tmp/time"
    crc=$(head -1 "$tmp/out" | tr -d '\r\n')
    cycles=$(grep -o 'is [0-9]* clock cycles' "$tmp/err" | grep -o '[0-9]*')
    [ "$crc" = "$expected" ] || { echo "${names[$i]}: CRC $crc, expected $expected" >&2; exit 1; }
    if [ -z "${want:-}" ]; then want=$cycles; fi
    [ "$cycles" = "$want" ] || { echo "${names[$i]}: $cycles cycles, plain run $want" >&2; exit 1; }
    awk '{ print $1 + $2 }' "$tmp/time" >> "$tmp/times-$i"
  done
done
if [ -s "$tmp/devices.log" ]; then echo "the LCD logged changes of a program that never drives it" >&2; exit 1; fi

# best and median of a file of times
stats() { sort -n "$1" | awk '{ t[NR] = $1 } END { m = NR % 2 ? t[(NR + 1) / 2] : (t[NR / 2] + t[NR / 2 + 1]) / 2; printf "%.3f %.3f", t[1], m }'; }
printf 'CRC %s, %s cycles each, %d rounds\n' "$expected" "$want" "$rounds"
printf '%-8s  %7s  %7s  %12s  %14s\n' run best median 'best / plain' 'median / plain'
read -r best0 median0 <<< "$(stats "$tmp/times-0")"
for i in "${!names[@]}"; do
  read -r best median <<< "$(stats "$tmp/times-$i")"
  printf '%-8s  %6ss  %6ss  %12.3f  %14.3f\n' "${names[$i]}" "$best" "$median" \
    "$(echo "$best / $best0" | bc -l)" "$(echo "$median / $median0" | bc -l)"
done

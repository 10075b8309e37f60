#!/usr/bin/env bash
# Runs each benchmark firmware (CRC-32, then the fixed-point Mandelbrot set) on velmora-cli
# and on simavr, ROUNDS times back to back (default 3), checks that both printed the result a
# host build of the same C code prints, and gives the best time of each and the ratio of
# simulated cycles per host second; with the desktop program built, also the desktop at the
# Ultimate rate with only its main window (offscreen) on the CRC-32 firmware beside the CLI.
# Usage: bench/compare.sh [BUILD_DIR] [ROUNDS]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
rounds=${2:-3}
cli=$build/src/cli/velmora-cli
fw=$top/bench/firmware
command -v simavr > /dev/null || { apt-get install -y -qq simavr > /dev/null; }
command -v avr-gcc > /dev/null || { apt-get install -y -qq gcc-avr avr-libc > /dev/null; }
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

now() { date +%s.%N; }
best() { printf '%s\n' "$@" | sort -g | head -1; }
status=0
for name in crc32 mandel; do
  avr-gcc -mmcu=atmega328p -Os -o "$tmp/$name.elf" "$fw/$name.c"
  expected=$(cat "$fw/$name.expected")
  velmora_times=() simavr_times=()
  for _ in $(seq "$rounds"); do
    t0=$(now)
    "$cli" run --model ATmega328P --clock 16 "$fw/$name.hex" > "$tmp/velmora.out" 2> "$tmp/velmora.err"
    t1=$(now)
    simavr -m atmega328p -f 16000000 "$tmp/$name.elf" > "$tmp/simavr.out" 2>&1 || true
    t2=$(now)
    velmora_times+=("$(echo "$t1 - $t0" | bc -l)")
    simavr_times+=("$(echo "$t2 - $t1" | bc -l)")
  done
  velmora_result=$(tr -d '\r\n' < "$tmp/velmora.out")
  simavr_result=$(grep -o '[0-9A-F]\{8\}' "$tmp/simavr.out" | head -1)
  cycles=$(grep -o 'is [0-9]* clock cycles' "$tmp/velmora.err" | grep -o '[0-9]*')
  tv=$(best "${velmora_times[@]}")
  ts=$(best "${simavr_times[@]}")
  printf '%s (%s cycles, best of %s)\n' "$name" "$cycles" "$rounds"
  printf '  expected      %s\n  velmora-cli   %s  %.3f s  %.1f simulated MHz\n  simavr        %s  %.3f s  %.1f simulated MHz\n' \
    "$expected" "$velmora_result" "$tv" "$(echo "$cycles / $tv / 1000000" | bc -l)" \
    "$simavr_result" "$ts" "$(echo "$cycles / $ts / 1000000" | bc -l)"
  printf '  ratio (velmora / simavr, cycles per second): %.2f\n' "$(echo "$ts / $tv" | bc -l)"
  if [ "$velmora_result" != "$expected" ] || [ "$simavr_result" != "$expected" ]; then
    echo "  result mismatch" >&2
    status=1
  fi
  desktop=$build/bench/velmora-bench-desktop
  if [ "$name" = crc32 ] && [ -x "$desktop" ]; then
    line=$(QT_QPA_PLATFORM=offscreen "$desktop" "$fw/$name.hex" ATmega328P 16 2> /dev/null | grep '^desktop')
    td=$(echo "$line" | awk '{print $3}')
    printf '  desktop       %s s  %.1f simulated MHz\n' "$td" "$(echo "$cycles / $td / 1000000" | bc -l)"
    printf '  ratio (desktop / velmora-cli, cycles per second): %.2f\n' "$(echo "$tv / $td" | bc -l)"
  fi
done
exit $status

#!/usr/bin/env bash
# Runs the CRC-32 benchmark firmware on velmora-cli and on simavr in the same invocation,
# checks that both printed the same CRC, and prints times and the ratio of simulated
# cycles per host second; with the desktop program built, also the desktop at the Ultimate
# rate with only its main window (offscreen) beside the CLI. Usage: bench/compare.sh [BUILD_DIR]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
cli=$build/src/cli/velmora-cli
fw=$top/bench/firmware
command -v simavr > /dev/null || { apt-get install -y -qq simavr > /dev/null; }
command -v avr-gcc > /dev/null || { apt-get install -y -qq gcc-avr avr-libc > /dev/null; }
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
avr-gcc -mmcu=atmega328p -Os -o "$tmp/crc32.elf" "$fw/crc32.c"
expected=$(cat "$fw/crc32.expected")

now() { date +%s.%N; }
t0=$(now)
"$cli" run --model ATmega328P --clock 16 "$fw/crc32.hex" > "$tmp/velmora.out" 2> "$tmp/velmora.err"
t1=$(now)
simavr -m atmega328p -f 16000000 "$tmp/crc32.elf" > "$tmp/simavr.out" 2>&1 || true
t2=$(now)

velmora_crc=$(tr -d '\r\n' < "$tmp/velmora.out")
simavr_crc=$(grep -o '[0-9A-F]\{8\}' "$tmp/simavr.out" | head -1)
cycles=$(grep -o 'is [0-9]* clock cycles' "$tmp/velmora.err" | grep -o '[0-9]*')
tv=$(echo "$t1 - $t0" | bc -l)
ts=$(echo "$t2 - $t1" | bc -l)
printf 'expected CRC  %s\nvelmora-cli   %s  %.3f s  %.1f simulated MHz\nsimavr        %s  %.3f s  %.1f simulated MHz\n' \
  "$expected" "$velmora_crc" "$tv" "$(echo "$cycles / $tv / 1000000" | bc -l)" \
  "$simavr_crc" "$ts" "$(echo "$cycles / $ts / 1000000" | bc -l)"
printf 'ratio (velmora / simavr, cycles per second): %.2f\n' "$(echo "$ts / $tv" | bc -l)"
desktop=$build/bench/velmora-bench-desktop
if [ -x "$desktop" ]; then
  line=$(QT_QPA_PLATFORM=offscreen "$desktop" "$fw/crc32.hex" ATmega328P 16 2> /dev/null | grep '^desktop')
  td=$(echo "$line" | awk '{print $3}')
  printf 'desktop       %s s  %.1f simulated MHz\n' "$td" "$(echo "$cycles / $td / 1000000" | bc -l)"
  printf 'ratio (desktop / velmora-cli, cycles per second): %.2f\n' "$(echo "$tv / $td" | bc -l)"
fi
[ "$velmora_crc" = "$expected" ] && [ "$simavr_crc" = "$expected" ] || { echo "CRC mismatch" >&2; exit 1; }

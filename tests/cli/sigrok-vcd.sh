#!/usr/bin/env bash
# Shows that sigrok reads velmora-cli's pin traces: runs the PORTB toggle firmware
# (data/toggle-atmega8.hex) with --vcd, lets `sigrok-cli -I vcd` read the file and write
# what it read as its own VCD, and compares the edges of both with the cycles counted by
# hand in data/toggle-atmega8.asm (8 MHz: 125 ns a cycle). Installs sigrok-cli with
# apt-get when it is missing. Usage: tests/cli/sigrok-vcd.sh [BUILD_DIR]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../../build}
cli=$build/src/cli/velmora-cli
[ -x "$cli" ] || { echo "no $cli; build the velmora-cli target first" >&2; exit 1; }

if ! command -v sigrok-cli >/dev/null; then
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    $sudo apt-get install -y sigrok-cli >/dev/null
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# "TIME PIN LEVEL" for every change after time 0, from any VCD of one-bit wires.
edges() {
    awk '
        skip { if ($0 ~ /\$end/) skip = 0; next }
        /^\$(comment|version|date)/ { if ($0 !~ /\$end/) skip = 1; next }
        $1 == "$var" { name[$4] = $5; next }
        /^\$/ { next }
        {
            for (i = 1; i <= NF; i++) {
                if ($i ~ /^#/) { t = substr($i, 2); continue }
                if ($i ~ /^[01]/ && t > 0) print t, name[substr($i, 2)], substr($i, 1, 1)
            }
        }' "$1"
}

"$cli" run --model ATmega8 --clock 8 --vcd "$work/velmora.vcd" --vcd-pins PORTB.0,PORTB.1 \
    "$here/data/toggle-atmega8.hex" 2>/dev/null
sigrok-cli -I vcd -i "$work/velmora.vcd" --show 2>/dev/null | grep -E "Samplerate|Channels|^- "
sigrok-cli -I vcd -i "$work/velmora.vcd" -O vcd -o "$work/sigrok.vcd"
grep '^\$timescale' "$work/sigrok.vcd"

# PB0 rises at cycle 5, PB1 at 37, PB0 falls at 39, PB1 at 4042: times 125 ns.
printf '%s\n' "625 PB0 1" "4625 PB1 1" "4875 PB0 0" "505250 PB1 0" > "$work/hand.txt"
edges "$work/velmora.vcd" > "$work/velmora.txt"
edges "$work/sigrok.vcd" > "$work/sigrok.txt"
echo "edges (ns, pin, level) as sigrok read them:"
sed 's/^/  /' "$work/sigrok.txt"
diff -u "$work/hand.txt" "$work/velmora.txt"
diff -u "$work/hand.txt" "$work/sigrok.txt"
echo "sigrok finds the edges at the cycles counted by hand"

#!/usr/bin/env bash
# Runs avr-gdb's commands of gdbsession.gdb against velmora-cli run --gdb on an ELF program,
# or with BYTES sends those bytes to the stub itself and goes away. The client's output on
# stdout, velmora-cli's stdout and stderr in FOLDER/velmora.out and .err, its exit code as ours.
# Usage: gdbsession.sh VELMORA-CLI PROGRAM.elf FOLDER [BYTES]
set -uo pipefail
cli=$1 elf=$2 folder=$3
here=$(cd "$(dirname "$0")" && pwd)
"$cli" run --model ATmega328P --clock 16 --gdb 0 "$elf" > "$folder/velmora.out" 2> "$folder/velmora.err" &
server=$!
port=
for _ in $(seq 200); do
  port=$(grep -o '127\.0\.0\.1:[0-9]*' "$folder/velmora.err" | cut -d: -f2)
  [ -n "$port" ] && break
  sleep 0.05
done
[ -n "$port" ] || { echo "velmora-cli did not listen" >&2; kill "$server"; exit 1; }
if [ $# -ge 4 ]; then
  exec 3<> "/dev/tcp/127.0.0.1/$port"
  printf '%b' "$4" >&3
  sleep 0.2
  timeout 1 cat <&3
  exec 3>&-
else
  sed "s/PORT/$port/" "$here/gdbsession.gdb" > "$folder/commands.gdb"
  # The sources beside the program: the compile folder the ELF names may not exist here.
  avr-gdb -batch -nx -ex "directory $(cd "$(dirname "$elf")" && pwd)" -x "$folder/commands.gdb" "$elf" 2>&1
fi
wait "$server"

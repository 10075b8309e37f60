#!/usr/bin/env bash
# Writes the expected skeletons of a comments-only program, one per model, with velmora-cli.
# Each was read against the order of the generated program (header, start-up code, rows, the
# self-jump, the end lines) before it was committed; rerun only when that order changes.
# Usage: make-skeletons.sh PATH/TO/velmora-cli
set -euo pipefail
cli=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
printf "' A comment only\r\n\r\n   ' an indented one\r\n" > "$work/comments.bas"
for model in ATmega32 ATmega8 ATtiny13 ATtiny12; do
  "$cli" basic --model "$model" "$work/comments.bas" > /dev/null
  cp "$work/comments.asm" "$here/skeleton-$model.asm"
done

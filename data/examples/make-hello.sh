#!/bin/sh
# Rebuilds hello.hex from hello.asm with avra (Debian package "avra"). The HEX file is
# committed, so running Velmora does not need the assembler.
set -e
cd "$(dirname "$0")"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
cp hello.asm "$tmp/"
(cd "$tmp" && avra -o hello.hex hello.asm >/dev/null)
cp "$tmp/hello.hex" hello.hex

#!/usr/bin/env bash
# Writes the libFuzzer dictionaries of dict/ from the product's own tables: the assembler's
# mnemonics and directives, the BASIC keywords and Define names, the model file's keys and
# section headers. Run it again when one of those tables changes.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
src=$(cd "$here/../../src" && pwd)
out="$here/dict"
mkdir -p "$out"
quote() { sed 's/\\/\\\\/g; s/"/\\"/g; s/.*/"&"/'; }

{
  grep -o '^ *{"[A-Z]*", 0x' "$src/assembler/asminstructions.cpp" | grep -o '[A-Z][A-Z]*' | sort -u
  printf '%s\n' .ORG .EQU .DB .DW .END .SET .DEF .INCLUDE .CSEG .EXIT .LIST .NOLIST
  printf '%s\n' 'LOW(' 'HIGH(' 'X+' '-X' 'Y+' '-Y' 'Z+' '-Z' 'Y+1' 'Z+63' '$FF' '0x' '0b' "'a'" ' ;' ':' ',' '"'
} | quote > "$out/asm.dict"

{
  sed -n '/basickeywords()/,/^}/p;/basicdefinenames()/,/^}/p' "$src/basic/keywords.cpp" \
    | grep -o '"[^"]*"' | tr -d '"'
  printf '%s\n' '=' '<>' '<=' '>=' '(' ')' ',' '.' "'" '"' ' ' 'PORTB.0' 'PINB' 'DDRB' '0x' '%' '$' '#'
} | sort -u | quote > "$out/basic.dict"

{
  grep -o '{"[a-z]*: "' "$src/models/keys.cpp" | grep -o '[a-z]*: '
  for s in 0 1 2 3 4 5; do echo "***** Section $s *****"; done
  printf '%s\n' '.equ ' ' = ' 'XXXX' ',' ';' 'PORTB' 'PB0' 'ADC0' 'INT0' 'GND' 'VCC'
} | quote > "$out/model.dict"

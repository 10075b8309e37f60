#!/usr/bin/env bash
# Writes the two settings files of this folder. ordinary.settings is what a few sessions
# leave behind. malformed.settings is a file edited by hand past every limit: numbers far
# too large, negative or no numbers at all, names given twice (the later value wins, in any
# letter case), lines cut short, a bad escape, and bytes of no text. The program must start
# on it as on an empty file, with every window in reach.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
T=$'\t'
header='# Velmora settings: kind (s text, n number), tab, name, tab, value; \ escapes control characters.'

{
  echo "$header"
  for row in "Save Positions${T}ON" "Clock Frequency${T}8" "Simulation Rate${T}3" "Message Duration${T}2" \
             "Window1 Left${T}3000" "Window1 Top${T}2000" "Window17 Width${T}9000" "Window17 Height${T}6000" \
             "C Font Size${T}12" "A Tab Size${T}4" "LCD Lines${T}2" "Last Path${T}/home/user/avr"; do
    echo "s${T}${row}"
  done
  echo "n${T}EEPROM Write Time${T}3400"
} > "$here/ordinary.settings"

{
  echo "$header"
  for row in \
      "Save Positions${T}ON" "Show Confirmations${T}OFF" \
      "Message Duration${T}99999" "Ultimate Timer${T}-5" "Simulation Rate${T}99999999999999999999" \
      "Unprogrammed Bit Value${T}7" "Clock Frequency${T}1e309" "Printer Font Size${T}1e308" \
      "Microcontroller Model${T}2147483647" \
      "Window1 Left${T}2147483647" "Window1 Top${T}-2147483648" \
      "Window16 Left${T}99999999" "Window16 Top${T}abc" "Window16 Width${T}2147483647" "Window16 Height${T}-1" \
      "Window17 Left${T}-1" "Window17 Top${T}491506" "Window17 Width${T}0" "Window17 Height${T}2147483647" \
      "Window17 Position${T}1000" "Window20 Left${T}2147483647" "Window20 Top${T}2147483647" \
      "C Font Size${T}2147483647" "C Tab Size${T}2147483647" "A Font Size${T}-3" "A Tab Size${T}-2147483648" \
      "C Keyword Color${T}-1" "A Text Color${T}2147483647" "C Undo Levels Number${T}-7" \
      "A Scroll Wheel Step${T}2147483647" \
      "EEPROM Write Time${T}2147483647" "A/D Conversion Time${T}0" "UART Transmit/Receive Time${T}-100000" \
      "LCD Lines${T}9999" "LCD Characters${T}-40" "LCD Busy Delay Cmd${T}2147483647" \
      "Auto Start Assembler${T}1" "Auto Start Compiler${T}1" "Auto Start Lcd${T}1" \
      "Auto Start Asm File${T}/nonexistent/x.asm" \
      "MESSAGE DURATION${T}2147483647"; do
    echo "s${T}${row}"
  done
  echo "n${T}Simulation Duration 0${T}1e999"
  echo "s${T}Color Theme${T}bad \\q escape"
  echo "x${T}Unknown Kind${T}1"
  echo "s${T}Save Always On Top"
  printf 's\tLast Path\t\000\377\200\r\n\377\376\375garbage\001\002\n'
  printf 's\tMessage Dur'
} > "$here/malformed.settings"

/* lcd.c with R/W on PB1: waits by reading the busy flag instead of fixed delays. */
#define LCD_POLL_BUSY 1
#include "lcd.c"

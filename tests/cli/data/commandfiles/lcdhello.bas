Define LCD_LINES = 2
Define LCD_CHARS = 16
Dim w As Word
w = 65535
Lcdinit
Lcdout "Hello", #w
ASM: SLEEP

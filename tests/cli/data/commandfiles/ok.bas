Hseropen
Hserout "hi"
ASM: SLEEP

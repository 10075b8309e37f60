Dim w As Word
Dim b As Byte
Dim e As Byte
Hseropen
Adcin 3, w
Adcin 3, b
Write 16, b
Read 16, e
Hserout #w, " ", #b, " ", #e
ASM: SLEEP

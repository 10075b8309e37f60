' Hserin takes each byte of a variable as it arrives, low byte first; Hserget does not wait.
Dim b As Byte
Dim w As Word
Dim l As Long
Dim t(2) As Byte
Dim i As Byte
Hseropen 9600
Hserin b
Hserin w, l
i = 1
Hserin t(i)
Hserout #b, " ", #w, " ", #l, " ", #t(1), CrLf
b = 99
Hserget b
Hserout #b, CrLf
End

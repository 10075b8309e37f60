' Expressions with brackets and precedence; the width follows the result (Word for a Byte).
Dim a As Byte
Dim b As Byte
Dim c As Byte
Dim d As Byte
Dim w As Word
Dim x As Word
Dim l As Long
Hseropen 9600
a = 200
b = 100
c = (a + b) / 2
Hserout "E1 ", #c, CrLf
c = a + b
c = c / 2
Hserout "E2 ", #c, CrLf
x = 2 + 3 * 4
Hserout "E3 ", #x, CrLf
x = (2 + 3) * 4
Hserout "E4 ", #x, CrLf
x = 100 - 10 - 5
Hserout "E5 ", #x, CrLf
x = 100 - (10 - 5)
Hserout "E6 ", #x, CrLf
x = 100 / 10 / 5
Hserout "E7 ", #x, CrLf
x = 100 / (10 / 5)
Hserout "E8 ", #x, CrLf
x = 17 Mod 5 * 3
Hserout "E9 ", #x, CrLf
x = 7 + 17 Mod 5
Hserout "E10 ", #x, CrLf
c = (a + b) * 2
Hserout "E11 ", #c, CrLf
x = (60000 + 10000) / 2
Hserout "E12 ", #x, CrLf
l = (60000 + 10000) / 2
Hserout "E13 ", #l, CrLf
x = ((2 + 3) * (4 + 5)) - 1
Hserout "E14 ", #x, CrLf
x = 10
x = x * 2 + x
Hserout "E15 ", #x, CrLf
w = 255
w = (w + 1) * (w - 1)
Hserout "E16 ", #w, CrLf
w = 65535
l = w * w + 1
Hserout "E17 ", #l, CrLf
c = a * 2 / 4
Hserout "E18 ", #c, CrLf
c = 20
d = 5
x = (a + b) * (c - d) + 7
Hserout "E19 ", #x, CrLf
End

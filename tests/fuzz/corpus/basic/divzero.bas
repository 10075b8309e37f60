' Division and Mod by zero: no check, the division routines give what they give.
Dim a As Byte
Dim b As Byte
Dim c As Byte
Dim w As Word
Dim z As Word
Dim x As Word
Dim l As Long
Dim k As Long
Dim m As Long
Hseropen 9600
a = 200
b = 0
c = a / 0
Hserout "B1 ", #c, CrLf
c = a Mod 0
Hserout "B2 ", #c, CrLf
c = a / b
Hserout "B3 ", #c, CrLf
c = a Mod b
Hserout "B4 ", #c, CrLf
c = b / b
Hserout "B5 ", #c, CrLf
c = b Mod b
Hserout "B6 ", #c, CrLf
w = 1234
z = 0
x = w / z
Hserout "W1 ", #x, CrLf
x = w Mod z
Hserout "W2 ", #x, CrLf
x = 65535 / 0
Hserout "W3 ", #x, CrLf
x = 65535 Mod 0
Hserout "W4 ", #x, CrLf
l = 123456789
k = 0
m = l / k
Hserout "L1 ", #m, CrLf
m = l Mod k
Hserout "L2 ", #m, CrLf
m = 4294967295 Mod 0
Hserout "L3 ", #m, CrLf
x = (w + 1) / z
Hserout "E1 ", #x, CrLf
c = (a + 1) Mod b
Hserout "E2 ", #c, CrLf
End

' Byte, Word and Long arithmetic: every result wraps at the size of the operation.
Dim a As Byte
Dim b As Byte
Dim c As Byte
Dim w As Word
Dim v As Word
Dim x As Word
Dim l As Long
Dim m As Long
Dim n As Long
Hseropen 9600
' Byte
a = 200
b = 100
c = a + b
Hserout "B1 ", #c, CrLf
c = b - a
Hserout "B2 ", #c, CrLf
c = a * 3
Hserout "B3 ", #c, CrLf
c = a / 7
Hserout "B4 ", #c, CrLf
c = a Mod 7
Hserout "B5 ", #c, CrLf
a = 255
a = a + 1
Hserout "B6 ", #a, CrLf
a = a - 1
Hserout "B7 ", #a, CrLf
c = 2 + 3
Hserout "B8 ", #c, CrLf
a = 200
c = a * b
Hserout "B9 ", #c, CrLf
c = 50
c = a - c
Hserout "B10 ", #c, CrLf
c = 50
c = c - a
Hserout "B11 ", #c, CrLf
c = 50
c = a + c
Hserout "B12 ", #c, CrLf
' Word
w = 60000
v = 10000
x = w + v
Hserout "W1 ", #x, CrLf
x = v - w
Hserout "W2 ", #x, CrLf
x = w * 2
Hserout "W3 ", #x, CrLf
x = 300 * 300
Hserout "W4 ", #x, CrLf
x = w / 7
Hserout "W5 ", #x, CrLf
x = w Mod 7
Hserout "W6 ", #x, CrLf
w = 65535
w = w + 1
Hserout "W7 ", #w, CrLf
w = w - 1
Hserout "W8 ", #w, CrLf
x = a * b
Hserout "W9 ", #x, CrLf
w = 60000
c = w + b
Hserout "W10 ", #c, CrLf
w = 255
w = w + 1
Hserout "W11 ", #w, CrLf
' Long
l = 4294967295
l = l + 1
Hserout "L1 ", #l, CrLf
l = l - 1
Hserout "L2 ", #l, CrLf
l = 100000
m = l * l
Hserout "L3 ", #m, CrLf
m = l * 3
Hserout "L4 ", #m, CrLf
n = 4000000000 + 500000000
Hserout "L5 ", #n, CrLf
l = 1000000000
m = l / 7
Hserout "L6 ", #m, CrLf
m = l Mod 7
Hserout "L7 ", #m, CrLf
w = 60000
l = w * w
Hserout "L8 ", #l, CrLf
m = 70000
x = m - 1
Hserout "L9 ", #x, CrLf
m = 5
l = m - 6
Hserout "L10 ", #l, CrLf
End

' ShiftLeft and ShiftRight by 0, 1 and 15 on Byte, Word and Long values.
Dim a As Byte
Dim c As Byte
Dim n As Byte
Dim w As Word
Dim x As Word
Dim l As Long
Dim m As Long
Hseropen 9600
a = 129
c = ShiftLeft(a, 0)
Hserout "BL ", #c, " "
c = ShiftLeft(a, 1)
Hserout #c, " "
c = ShiftLeft(a, 15)
Hserout #c, CrLf
c = ShiftRight(a, 0)
Hserout "BR ", #c, " "
c = ShiftRight(a, 1)
Hserout #c, " "
c = ShiftRight(a, 15)
Hserout #c, CrLf
w = 32769
n = 0
x = ShiftLeft(w, n)
Hserout "WL ", #x, " "
n = 1
x = ShiftLeft(w, n)
Hserout #x, " "
n = 15
x = ShiftLeft(w, n)
Hserout #x, CrLf
x = ShiftRight(w, 0)
Hserout "WR ", #x, " "
x = ShiftRight(w, 1)
Hserout #x, " "
x = ShiftRight(w, 15)
Hserout #x, CrLf
l = 2147483649
m = ShiftLeft(l, 0)
Hserout "LL ", #m, " "
m = ShiftLeft(l, 1)
Hserout #m, " "
m = ShiftLeft(l, 15)
Hserout #m, CrLf
m = ShiftRight(l, 0)
Hserout "LR ", #m, " "
m = ShiftRight(l, 1)
Hserout #m, " "
m = ShiftRight(l, 15)
Hserout #m, CrLf
x = ShiftLeft(a, 1)
Hserout "BW ", #x, CrLf
w = 43981
c = ShiftRight(w, 8)
Hserout "WB ", #c, CrLf
w = ShiftLeft(w, 4)
Hserout "WW ", #w, CrLf
End

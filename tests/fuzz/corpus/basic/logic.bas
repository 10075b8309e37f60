' Bit logic over the four input pairs (p, q) = 00, 01, 10, 11, and Byte, Word and Long logic.
Dim p As Bit
Dim q As Bit
Dim r As Bit
Dim i As Byte
Dim a As Byte
Dim b As Byte
Dim c As Byte
Dim w As Word
Dim v As Word
Dim x As Word
Dim l As Long
Dim m As Long
Hseropen 9600
Hserout "And "
For i = 0 To 3
p = i.1
q = i.0
r = p And q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Or "
For i = 0 To 3
p = i.1
q = i.0
r = p Or q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Xor "
For i = 0 To 3
p = i.1
q = i.0
r = p Xor q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Nand "
For i = 0 To 3
p = i.1
q = i.0
r = p Nand q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Nor "
For i = 0 To 3
p = i.1
q = i.0
r = p Nor q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Nxor "
For i = 0 To 3
p = i.1
q = i.0
r = p Nxor q
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf, "Not "
For i = 0 To 1
p = i.0
r = Not p
c = 0
c.0 = r
Hserout #c
Next i
Hserout CrLf
a = 197
b = 90
c = a And b
Hserout "BAnd ", #c, CrLf
c = a Or b
Hserout "BOr ", #c, CrLf
c = a Xor b
Hserout "BXor ", #c, CrLf
c = a Nand b
Hserout "BNand ", #c, CrLf
c = a Nor b
Hserout "BNor ", #c, CrLf
c = a Nxor b
Hserout "BNxor ", #c, CrLf
c = Not a
Hserout "BNot ", #c, CrLf
c = a And 15
Hserout "BAnd15 ", #c, CrLf
w = 4660
v = 65280
x = w And v
Hserout "WAnd ", #x, CrLf
x = w Or v
Hserout "WOr ", #x, CrLf
x = w Xor v
Hserout "WXor ", #x, CrLf
x = Not w
Hserout "WNot ", #x, CrLf
l = 0
m = Not l
Hserout "LNot ", #m, CrLf
l = 305419896
m = l Nxor 4042322160
Hserout "LNxor ", #m, CrLf
End

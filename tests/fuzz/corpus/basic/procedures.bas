' Procedures and functions: arguments live in global variables with made-up names, an
' argument left out keeps its last value, and a function's result is a variable of its name.
Dim total As Word
Dim r As Word
Dim n As Byte
Dim flags As Byte
Dim arr(4) As Byte
Hseropen 9600
n = 9
r = square(12)
Hserout "P1 ", #r, CrLf
r = square(255)
Hserout "P2 ", #r, CrLf
r = scaled(1000, 3)
Hserout "P3 ", #r, CrLf
r = scaled(7)
Hserout "P4 ", #r, CrLf
Call add(5, 100)
Call add(7)
Hserout "P5 ", #total, CrLf
Call add(1, 2)
Hserout "P6 ", #total, " ", #n, CrLf
Call mark(2)
Call mark(3)
Hserout "P7 ", #flags, " ", #arr(2), " ", #arr(3), CrLf
r = clamp(300)
Hserout "P8 ", #r, CrLf
r = clamp(77)
Hserout "P9 ", #r, CrLf
Call square(4)
r = square
Hserout "P10 ", #r, CrLf
r = seven()
Hserout "P11 ", #r, CrLf
Call both(3)
Hserout "P12 ", #total, CrLf
End
Function square(x As Byte) As Word
square = x * x
End Function
Function scaled(w As Word, k As Byte) As Word
scaled = w * k
End Function
Function clamp(v As Word) As Byte
clamp = 255
If v > 255 Then Exit
clamp = v.LB
End Function
Function seven() As Byte
seven = 7
End Function
Proc add(n As Byte, amount As Word)
Dim k As Byte
For k = 1 To n
total = total + amount
Next k
End Proc
Proc mark(i As Byte)
arr(i) = i
If i.0 = 1 Then Exit
flags = flags + i
End Proc
Proc both(j As Byte)
Call add(j, 10)
Call add(j)
End Proc

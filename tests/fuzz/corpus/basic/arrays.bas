' Array elements on both sides of assignments, with constant and variable indexes.
Dim t(10) As Byte
Dim u(5) As Word
Dim i As Byte
Dim k As Byte
Dim j As Word
Dim c As Byte
Dim x As Word
Hseropen 9600
For i = 0 To 9
t(i) = i * 3
Next i
t(0) = 100
t(9) = t(0)
k = 2
t(k) = t(9)
Hserout "T"
For i = 0 To 9
Hserout " ", #t(i)
Next i
Hserout CrLf
u(0) = 1000
u(1) = 65535
u(4) = u(1)
i = 2
u(i) = u(0) + t(3)
i = 3
k = 1
u(i) = u(k)
u(i) = u(i) + 1
Hserout "U"
For i = 0 To 4
Hserout " ", #u(i)
Next i
Hserout CrLf
j = 258
c = t(j)
Hserout "J ", #c, CrLf
i = 5
t(i) = (t(i) + 1) * 2
Hserout "X ", #t(5), CrLf
i = 4
x = t(i) + u(i) * 2
Hserout "Y ", #x, CrLf
k = 6
t(k) = t(i)
Hserout "Z ", #t(6), CrLf
t(10) = 52
t(11) = 18
Hserout "O ", #u(0), CrLf
End

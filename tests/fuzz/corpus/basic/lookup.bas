' LookUp tables: values in range, the pad of an odd table, and indexes past the end.
Dim i As Byte
Dim c As Byte
Dim w As Word
Dim j As Word
Dim l As Long
Hseropen 9600
Hserout "A"
For i = 0 To 5
c = 99
c = LookUp(10, 20, 30), i
Hserout " ", #c
Next i
Hserout CrLf, "B"
For i = 0 To 2
c = 99
c = LookUp(7, 8), i
Hserout " ", #c
Next i
Hserout CrLf, "C"
For i = 0 To 4
c = 99
c = LookUp("ABC"), i
Hserout " ", #c
Next i
Hserout CrLf
w = 65535
i = 1
w = LookUp(200, 201), i
Hserout "D ", #w, CrLf
w = 65535
i = 2
w = LookUp(200, 201), i
Hserout "E ", #w, CrLf
l = 4294967295
i = 0
l = LookUp(77), i
Hserout "F ", #l, CrLf
c = LookUp(5, 6, 7), 2
Hserout "G ", #c, CrLf
j = 257
c = LookUp(40, 41, 42), j
Hserout "H ", #c, CrLf
Hserout "I"
For i = 99 To 103
c = 250
c = LookUp(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 78, 79, 80, 81, 82, 83, 84, 85, 86, 87, 88, 89, 90, 91, 92, 93, 94, 95, 96, 97, 98, 99, 100), i
Hserout " ", #c
Next i
Hserout CrLf
End

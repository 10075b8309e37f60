' For loops of every width and direction, ending at the type's limits, and While loops.
Dim i As Byte
Dim s As Byte
Dim w As Word
Dim l As Long
Dim a As Byte
Dim b As Byte
Dim f As Bit
Hseropen 9600
Hserout "A:"
For i = 250 To 255
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "B:"
For i = 5 To 1
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "C:"
For i = 1 To 10 Step 3
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "D:"
For i = 0 To 255 Step 100
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "E:"
For i = 10 To 0 Step -2
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "F:"
For i = 3 To 1 Step -1
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "G:"
For i = 2 To 0 Step -1
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "H:"
For i = 255 To 255
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "I:"
s = 60
For i = 0 To 200 Step s
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "J:"
For i = 200 To 50 Step -s
Hserout " ", #i
Next i
Hserout " end ", #i, CrLf, "K:"
For w = 65533 To 65535
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "L:"
For w = 254 To 257
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "M:"
For w = 1000 To 3000 Step 1000
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "N:"
For w = 60000 To 65535 Step 5000
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "O:"
For w = 2 To 0 Step -1
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "P:"
For w = 300 To 100 Step -100
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "Q:"
i = 254
For w = i To 256
Hserout " ", #w
Next w
Hserout " end ", #w, CrLf, "R:"
For l = 4294967294 To 4294967295
Hserout " ", #l
Next l
Hserout " end ", #l, CrLf, "S:"
For l = 70000 To 69998 Step -1
Hserout " ", #l
Next l
Hserout " end ", #l, CrLf, "T:"
For l = 1 To 0 Step -1
Hserout " ", #l
Next l
Hserout " end ", #l, CrLf, "U:"
For l = 0 To 200000 Step 100000
Hserout " ", #l
Next l
Hserout " end ", #l, CrLf, "V:"
For l = 0 To 4294967295 Step 2147483648
Hserout " ", #l
Next l
Hserout " end ", #l, CrLf, "W:"
a = 0
While a < 5
Hserout " ", #a
a = a + 1
Wend
Hserout " end ", #a, CrLf, "X:"
a = 253
While a > 250 Or a < 2
Hserout " ", #a
a = a + 1
Wend
Hserout " end ", #a, CrLf, "Y:"
a = 0
b = 10
While a < 10 And b > 6
Hserout " ", #a
a = a + 1
b = b - 1
Wend
Hserout " end ", #a, " ", #b, CrLf, "Z:"
a = 0
f = 1
While f
Hserout " ", #a
a = a + 1
If a = 3 Then f = 0
Wend
While Not f
Hserout " not"
f = 1
Wend
a = 0
While a > 100
Hserout " never"
Wend
Hserout " end ", #a, CrLf
End

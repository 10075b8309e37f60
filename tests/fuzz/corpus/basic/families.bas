' Every statement family compiled so far
Dim a As Byte
Dim b As Byte
Dim w As Word
Dim l As Long
Dim f As Bit
Dim t(8) As Byte
Dim i As Byte
Define CLOCK_FREQUENCY = 8
Hseropen 19200
a = 200
w = a * 3 + (w - 1) / 2
l = l * w + 70000
l = l Mod 7
f = a.7
f = Not f
b = a Xor 0x55
w = ShiftLeft(w, 3)
w = Sqr(w)
For i = 0 To 7
t(i) = i
Next i
While a > 10 And f = 0
a = a - 10
Wend
Select Case b
Case 1, 2, < 5
Hserout "few"
Case Else
Hserout #w, " ", #l, CrLf
EndSelect
If a <> b Then Goto done Else Gosub sub
done: Hserget a
Enable INT0
Pointer(w) = a
End
sub: Return

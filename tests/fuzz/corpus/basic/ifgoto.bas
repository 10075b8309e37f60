' One-line If ... Then Goto ... Else Goto ..., block If/Else, and the six comparisons.
Dim a As Byte
Dim b As Byte
Dim w As Word
Dim v As Word
Dim l As Long
Dim m As Long
Dim f As Bit
Dim g As Bit
Hseropen 9600
a = 5
If a = 5 Then Goto yes1 Else Goto no1
yes1: Hserout "G1 yes", CrLf
Goto next1
no1: Hserout "G1 no", CrLf
next1: a = 6
If a = 5 Then Goto yes2 Else Goto no2
yes2: Hserout "G2 yes", CrLf
Goto next2
no2: Hserout "G2 no", CrLf
next2:
If a > 5 Then Hserout "G3 then", CrLf Else Hserout "G3 else", CrLf
If a < 5 Then Hserout "G4 then", CrLf Else Hserout "G4 else", CrLf
If a = 6 Then Hserout "G5 only", CrLf
If a = 7 Then Hserout "G6 never", CrLf
' The six comparisons at Byte, Word and Long width for less, equal and greater:
' the digits are = <> < <= > >=
a = 3
b = 5
Gosub compare
a = 5
Gosub compare
a = 200
Gosub compare
w = 40000
v = 1000
If w > v Then Hserout "W1 then", CrLf Else Hserout "W1 else", CrLf
If w <= v Then Hserout "W2 then", CrLf Else Hserout "W2 else", CrLf
v = 40000
If w >= v Then Hserout "W3 then", CrLf Else Hserout "W3 else", CrLf
If w <> v Then Hserout "W4 then", CrLf Else Hserout "W4 else", CrLf
w = 65535
If w > 255 Then Hserout "W5 then", CrLf Else Hserout "W5 else", CrLf
l = 3000000000
m = 5
If l > m Then Hserout "L1 then", CrLf Else Hserout "L1 else", CrLf
If l < 4294967295 Then Hserout "L2 then", CrLf Else Hserout "L2 else", CrLf
If m = 5 Then Hserout "L3 then", CrLf Else Hserout "L3 else", CrLf
f = 1
g = 0
If f = g Then Hserout "T1 then", CrLf Else Hserout "T1 else", CrLf
If f <> g Then Hserout "T2 then", CrLf Else Hserout "T2 else", CrLf
If f Then Hserout "T3 then", CrLf Else Hserout "T3 else", CrLf
If Not g Then Hserout "T4 then", CrLf Else Hserout "T4 else", CrLf
If g = 1 Then Hserout "T5 then", CrLf Else Hserout "T5 else", CrLf
g = 1
If f = g Then Hserout "T6 then", CrLf Else Hserout "T6 else", CrLf
If f <> g Then Hserout "T7 then", CrLf Else Hserout "T7 else", CrLf
' Block forms, nested, with And and Or.
a = 10
b = 20
If a = 10 And b = 20 Then
Hserout "K1 both"
Else
Hserout "K1 not both"
Endif
Hserout CrLf
If a = 11 Or b = 20 Then
Hserout "K2 either"
If a < b Then
Hserout " inner"
Endif
Else
Hserout "K2 neither"
Endif
Hserout CrLf
If a = 11 Or b = 21 Then
Hserout "K3 either"
Else
Hserout "K3 neither"
Endif
Hserout CrLf
If a > b Then
Hserout "K4 never"
Endif
Hserout "K5 end", CrLf
End
compare:
Hserout "C ", #a, " ", #b, " "
If a = b Then Hserout "1" Else Hserout "0"
If a <> b Then Hserout "1" Else Hserout "0"
If a < b Then Hserout "1" Else Hserout "0"
If a <= b Then Hserout "1" Else Hserout "0"
If a > b Then Hserout "1" Else Hserout "0"
If a >= b Then Hserout "1" Else Hserout "0"
Hserout CrLf
Return

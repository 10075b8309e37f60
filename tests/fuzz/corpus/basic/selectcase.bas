' Select Case with single values, lists, comparisons (ranges), lists mixing both, and Case Else.
Dim i As Byte
Dim w As Word
Dim k As Byte
Hseropen 9600
For i = 0 To 12
Hserout #i, "="
Select Case i
Case 0
Hserout "zero"
Case 1, 2, 3
Hserout "small"
Case < 7
Hserout "mid"
Case 7, >= 11
Hserout "edge"
Case <> 9
Hserout "other"
Case Else
Hserout "nine"
EndSelect
Hserout " "
Next i
Hserout CrLf
For k = 0 To 4
w = 1000
If k = 1 Then w = 999
If k = 2 Then w = 1001
If k = 3 Then w = 65535
If k = 4 Then w = 0
Hserout #w, "="
Select Case w
Case <= 999
Hserout "low"
Case 1000
Hserout "exact"
Case > 1000, 0
Hserout "high"
EndSelect
Hserout " "
Next k
Hserout CrLf
i = 5
Select Case i
Case 1
Hserout "one"
Case 2, 3
Hserout "two or three"
EndSelect
Hserout "none", CrLf
End

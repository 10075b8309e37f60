' INT0 counts rising edges that the run's --pin options give (int0edges.args) while the main
' program adds and multiplies in a loop; both use R16 to R19, so the routine must save them.
Dim edges As Byte
Dim seen As Word
Dim sum As Word
Dim i As Byte
Dim w As Word
Dim total As Word
Hseropen 9600
Config PORTD.2 = Input
EICRA = 3
Enable INT0
Enable
For i = 1 To 250
sum = sum + i
w = i * 3
total = total + w
Next i
Disable
Hserout "edges ", #edges, " seen ", #seen, " sum ", #sum, " total ", #total, CrLf
End
On Interrupt INT0
edges = edges + 1
seen = seen + edges
Resume

' Every kind of Hserout item: strings, decimals of each type, raw bytes of constants,
' variables and elements, CrLf and Lf; and Hserget with nothing received.
Dim b As Byte
Dim w As Word
Dim l As Long
Dim t(3) As Byte
Dim u(2) As Word
Dim i As Byte
Hseropen 9600
Hserout "Text, with a comma", CrLf
Hserout "a", "b", Lf
b = 0
Hserout #b, " "
b = 7
Hserout #b, " "
b = 255
Hserout #b, CrLf
w = 0
Hserout #w, " "
w = 10
Hserout #w, " "
w = 100
Hserout #w, " "
w = 10000
Hserout #w, " "
w = 65535
Hserout #w, CrLf
l = 0
Hserout #l, " "
l = 100000
Hserout #l, " "
l = 1000000001
Hserout #l, " "
l = 1234567890
Hserout #l, " "
l = 4294967295
Hserout #l, CrLf
t(1) = 42
u(1) = 513
i = 1
Hserout #t(1), " ", #t(i), " ", #u(1), " ", #u(i), CrLf
Hserout 65, 66
b = 67
Hserout b
w = 17732
Hserout w
l = 1414743380
Hserout l
t(2) = 85
i = 2
Hserout t(i), t(2)
u(0) = 22358
i = 0
Hserout u(i), u(0), CrLf
Hserout 33, 13, 10
b = 99
Hserget b
Hserout #b, Lf
End

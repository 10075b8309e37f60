' Square roots of Byte, Word and constant arguments: the whole part of the root.
Dim a As Byte
Dim c As Byte
Dim w As Word
Dim x As Word
Hseropen 9600
c = Sqr(0)
Hserout #c, " "
c = Sqr(1)
Hserout #c, " "
c = Sqr(2)
Hserout #c, " "
c = Sqr(3)
Hserout #c, " "
c = Sqr(4)
Hserout #c, CrLf
a = 99
c = Sqr(a)
Hserout #c, " "
a = 100
c = Sqr(a)
Hserout #c, " "
a = 255
c = Sqr(a)
Hserout #c, CrLf
w = 256
x = Sqr(w)
Hserout #x, " "
w = 10000
x = Sqr(w)
Hserout #x, " "
w = 50000
x = Sqr(w)
Hserout #x, " "
w = 65024
x = Sqr(w)
Hserout #x, " "
w = 65025
x = Sqr(w)
Hserout #x, " "
x = 12345
x = Sqr(65535)
Hserout #x, CrLf
End

Dim a As Byte
a = 300

' A receive interrupt echoes each byte, lower-case letters in upper case, and counts them;
' the main program waits for the full stop, then reports.
Dim c As Byte
Dim got As Byte
Dim done As Bit
Hseropen 9600
Enable USART_RXC
Enable
While done = 0
Wend
Disable
Hserout CrLf, "bytes ", #got, CrLf
End
On Interrupt USART_RXC
Hserin c
got = got + 1
If c >= 97 Then
c = c - 32
Endif
Hserout c
If c = 46 Then done = 1
Resume

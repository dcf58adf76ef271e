' Fonts have numbers and names; the classic ones on every machine, the others as they are installed.
Dim c As New QTChapterDataKRZ
Print c.FontName                                               ' expect: Chicago
For Each name As String In Array("chicago", "GENEVA", "Monaco", "Helvetica", "Times", "Mobile", "no such font", "")
  c.FontName = name
  Print c.FontNumber, c.FontName
Next
' expect: 0 Chicago
' expect: 3 Geneva
' expect: 4 Monaco
' expect: 21 Helvetica
' expect: 20 Times
' expect: 24 Mobile
' expect: 0 Chicago
' expect: 0 Chicago
' Only 16 bits of a number count, with their sign.
c.FontNumber = 65536 + 22
Print c.FontName                                               ' expect: Courier
c.FontNumber = -3
Print "[" + c.FontName + "]"                                   ' expect: []

' Strings: joining, comparing without regard to case, quotes, printing.
Dim a As String = "he said ""hi"""
Print a                                        ' expect: he said "hi"
Print "a" + "b" & 1 & 2.5 & True               ' expect: ab12.5True
Print "ABC" = "abc", "abc" <> "ABD", "Äpfel" = "äPFEL", "ж" = "Ж"   ' expect: True True True True
Print "a" < "B", "b" < "A", "" < "a", "ab" > "a", "é" > "z"         ' expect: True False True True True
Dim empty As String
Print "[" + empty + "]", empty = ""            ' expect: [] True
Dim long As String = "x"
For i As Integer = 1 To 10
  long = long + long
Next
Print Len(long)                                ' expect: 1024
Print "joined " _
  + "over " _  ' with a comment
  + "lines"                                    ' expect: joined over lines
Print                                          ' expect:
Print "héllo", "日本"                          ' expect: héllo 日本

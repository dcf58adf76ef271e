' A Static belongs to its routine and gets its value once.
Function First() As Integer
  Print "once"
  Return 10
End Function
Function Counted() As Integer
  Static n As Integer = First()
  Static names() As String, plain As Integer
  n = n + 1
  plain = plain + 1
  names.Append String(n)
  Return n * 100 + names.Count * 10 + plain
End Function
Print "start"                      ' expect: start
Print Counted()
' expect: once
' expect: 1111
Print Counted(), Counted()         ' expect: 1222 1333
Function Other() As Integer
  Static n As Integer
  n = n + 2
  Return n
End Function
Print Other(), Other()             ' expect: 2 4
Class Box
  Function Take() As String
    Static seen As String = "-"
    seen = seen + "x"
    Return seen
  End Function
End Class
Dim a As New Box
Dim b As New Box
Print a.Take, b.Take               ' expect: -x -xx
For i As Integer = 1 To 3
  Static total As Integer = 5
  total = total + i
  If i = 3 Then Print total        ' expect: 11
Next

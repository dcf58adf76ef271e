' Exceptions: which Catch takes them, and that Finally runs on every way out.
Function Way(number As Integer) As String
  Try
    Select Case number
    Case 1
      Return "returned"
    Case 2
      Raise New OutOfBoundsException
    Case 3
      Print 1 \ (number - 3)
    End Select
    Print "through"
  Catch e As OutOfBoundsException
    Return "caught"
  Finally
    Print "finally", number
  End Try
  Return "end"
End Function
Print Way(1)          ' expect: finally 1
' expect: returned
Print Way(2)          ' expect: finally 2
' expect: caught
Print Way(4)          ' expect: through
' expect: finally 4
' expect: end
Try
  Print Way(3)        ' expect: finally 3
Catch e As RuntimeException
  Print e.Message     ' expect: the divisor is 0
End Try

For i As Integer = 1 To 5
  Try
    If i = 2 Then Continue
    If i = 3 Then Exit For
    Print "round", i  ' expect: round 1
  Finally
    Print "left", i   ' expect: left 1
  End Try             ' expect: left 2
Next                  ' expect: left 3

' A Finally that returns takes the exception's place.
Function Swallow() As String
  Try
    Raise New RuntimeException
  Finally
    Return "swallowed"
  End Try
End Function
Print Swallow()       ' expect: swallowed

Try
  Try
    Raise New NilObjectException
  Catch e As OutOfBoundsException
    Print "wrong"
  End Try
Catch
  Print "outer"       ' expect: outer
End Try

Sub Deeper(n As Integer)
  Deeper(n + 1)
End Sub
Try
  Deeper(1)
Catch e As StackOverflowException
  Print "deep"        ' expect: deep
End Try

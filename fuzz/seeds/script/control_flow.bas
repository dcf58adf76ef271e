' Conditions and loops, at both ends and left in every way.
Dim s As String
For i As Integer = 1 To 3
  s = s & i
Next
For i As Integer = 3 DownTo 1
  s = s & i
Next i
For i As Integer = 0 To 10 Step 5
  s = s & i & "."
Next
For d As Double = 0 To 1 Step 0.25
  s = s & d & ";"
Next
For k As Int64 = 5 To 1 Step -2
  s = s & k
Next
For i As Integer = 1 To 0
  s = s & "never"
Next
Print s                                     ' expect: 1233210.5.10.0;0.25;0.5;0.75;1;531

' The largest Integer ends a loop, it does not go round.
Dim rounds As Integer
For i As Integer = 2147483646 To 2147483647
  rounds = rounds + 1
Next
For i As Integer = -2147483647 DownTo -2147483648
  rounds = rounds + 1
Next
Print rounds                                ' expect: 4

Dim n As Integer
While n < 3
  n = n + 1
  If n = 2 Then Continue
  Print "while", n                          ' expect: while 1
Wend                                        ' expect: while 3
Do
  n = n - 1
Loop Until n = 0
Do While n < 2
  n = n + 1
Loop
Do Until n = 5
  n = n + 1
  If n = 4 Then Exit Do
Loop
Print n                                     ' expect: 4

For i As Integer = 1 To 3
  For j As Integer = 1 To 3
    If j = 2 Then Continue For
    If i = 3 Then Exit For
    Print i, j                              ' expect: 1 1
  Next                                      ' expect: 1 3
Next                                        ' expect: 2 1
' expect: 2 3

Function Size(value As Integer) As String
  Select Case value
  Case 0
    Return "none"
  Case 1, 2
    Return "few"
  Case 3 To 6, 8
    Return "some"
  Case Is > 100
    Return "many"
  Case Else
    Return "other"
  End Select
End Function
Print Size(0), Size(2), Size(5), Size(8), Size(7), Size(101)  ' expect: none few some some other many
Select Case "MOOV"
Case "moov"
  Print "text too"                          ' expect: text too
End Select

If n = 1 Then
  Print "one"
ElseIf n = 4 Then
  Print "four"                              ' expect: four
Else
  Print "else"
End If
If n = 9 Then Print "nine" Else Print "not nine"   ' expect: not nine

' A For that counts in a variable of the module, seen from a Sub.
Dim shown As Integer
Sub Count()
  For shown = 1 To 3
    Show
  Next
End Sub
Sub Show()
  Print "shown", shown                      ' expect: shown 1
End Sub
Count                                       ' expect: shown 2
Print shown                                 ' expect: shown 3
' expect: 4

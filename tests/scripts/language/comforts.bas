' Several statements on a line, assignments that read their target, and calls whose first argument
' begins with a parenthesis.
Dim a As Integer = 1 : Dim b As Integer : b = a + 1 : Print a, b   ' expect: 1 2
For i As Integer = 1 To 3 : a = a + i : Next : Print a              ' expect: 7
If a = 7 Then b = 10 : Print "seven" Else b = 0 : Print "other"     ' expect: seven
If a = 8 Then b = 0 : Print "eight" Else b += 1 : Print b           ' expect: 11
If b > 5 Then : Print "block" : End If                              ' expect: block
Select Case a : Case 7 : Print "case" : Case Else : Print "else" : End Select   ' expect: case
While a > 5 : a -= 1 : Wend
Try : Raise New OutOfBoundsException : Catch : Print "caught" : Finally : Print "last" : End Try
' expect: caught
' expect: last
Sub Two(x As Integer) : Print x : Print x : End Sub : Two 4
' expect: 4
' expect: 4
: : Print a :                                                       ' expect: 5

a += 2 : a *= 3 : a -= 1 : Print a                                  ' expect: 20
Dim d As Double = 3 : d /= 2 : d += a : Print d                     ' expect: 21.5
Dim s As String = "x" : s &= 1 + 1 : s += "y" : Print s             ' expect: x2y
Dim v As Variant = 1 : v += 0.5 : v &= "!" : Print v                ' expect: 1.5!

Dim calls As Integer
Function At(n As Integer) As Integer
  calls += 1
  Return n
End Function
Dim list() As Integer = Array(1, 2, 3)
list(At(1)) += 10 : list(0) *= 5
Print list(0), list(1), calls                                       ' expect: 5 12 1
Dim grid(2, 2) As String
grid(At(1), At(2)) &= "g" : grid(1, 2) &= "h" : Print grid(1, 2), calls   ' expect: gh 3
Function MoveOn(ByRef i As Integer) As Integer
  i += 1
  Return 100
End Function
Dim place As Integer
list(place) += MoveOn(place) : Print list(0), list(1), place        ' expect: 105 12 1

Dim made As Integer
Function Make(block As MemoryBlock) As MemoryBlock
  made += 1
  Return block
End Function
Dim block As New MemoryBlock(8)
Make(block).Byte(At(2)) += 7 : block.Byte(2) *= 3 : Make(block).Size += 4
Print block.Byte(2), block.Size, made, calls                        ' expect: 21 12 2 4
Dim names As New Dictionary
names.Value("n") = 1 : names.Value("n") += 1 : Print names.Value("n")   ' expect: 2

Sub Bump(ByRef n As Integer, by As Integer)
  n += by
End Sub
Bump(a, 1) : Bump list(1), 1 : Print a, list(1)                     ' expect: 21 13

Sub Check(fits As Boolean, line As Integer)
  Print fits, line
End Sub
Check (a) <= b, 1                                                   ' expect: False 1
Check (a + 1) * 2 = 44, 2                                           ' expect: True 2
Check (True), 3                                                     ' expect: True 3
Check (True, 4)                                                     ' expect: True 4
Check (block) IsA MemoryBlock And a > 1, 5                          ' expect: True 5
list (2) = 9 : list (2) += 1 : Print list (2)                       ' expect: 10
list.Append (1) + 2 : Print list(3)                                 ' expect: 3

Dim größe As Integer = 3, 数 As Integer = 4, café_2 As String = "é"
Print größe * 数, CAFé_2                                             ' expect: 12 é

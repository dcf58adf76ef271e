' Arrays: bounds, members, For Each, several dimensions, arrays handed around.
Dim list() As Integer
Print list.Count, UBound(list), list.LastIndex   ' expect: 0 -1 -1
list.Append 3
list.Add(5)
list.Insert(0, 1)
Print list.Count, list(0), list(1), list(2)      ' expect: 3 1 3 5
Print list.IndexOf(5), list.IndexOf(6)           ' expect: 2 -1
list.RemoveAt(1)
Print list.Pop, list.Count                       ' expect: 5 1
ReDim list(4)
Print list.Count, list(0), list(4)               ' expect: 5 1 0

Dim grid(2, 3) As String
grid(0, 0) = "a"
grid(2, 3) = "z"
ReDim grid(2, 1)
Print grid(0, 0), UBound(grid), UBound(grid, 2)  ' expect: a 2 1

Dim words() As String = Array("x", "y", "z")
For Each word As String In words
  If word = "x" Then words.Append("late")
  Print word                                     ' expect: x
Next                                             ' expect: y
' expect: z
' expect: late

Sub Fill(target() As Double, value As Double)
  For i As Integer = 0 To target.LastIndex
    target(i) = value
  Next
End Sub
Dim numbers(1) As Double
Fill numbers, 2
Print numbers(0), numbers(1)                     ' expect: 2 2
Dim other() As Double = numbers
other(0) = 9
Print numbers(0)                                 ' expect: 9
Dim none() As Double = Nil
Print none = Nil, numbers Is other               ' expect: True True

Try
  Print numbers(2)
Catch e As OutOfBoundsException
  Print e.Message                                ' expect: the index 2 is outside 0 To 1
End Try
Try
  Print none(0)
Catch e As NilObjectException
  Print e.Message                                ' expect: none is Nil
End Try

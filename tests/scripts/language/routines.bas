' Subs and Functions: ByRef, defaults, overloads, recursion, use before declaration.
' args: one two
Print Factorial(20), Fibonacci(20)               ' expect: 2432902008176640000 6765
Function Factorial(n As Integer) As Int64
  If n <= 1 Then Return 1
  Return n * Factorial(n - 1)
End Function
Function Fibonacci(n As Integer) As Integer
  If n < 2 Then Return n
  Return Fibonacci(n - 1) + Fibonacci(n - 2)
End Function

Sub Swap(ByRef x As String, ByRef y As String)
  Dim kept As String = x
  x = y
  y = kept
End Sub
Dim a As String = "left", b As String = "right"
Swap a, b
Print a, b                                       ' expect: right left
Dim list(2) As String
list(0) = "first"
list(2) = "last"
Swap list(0), list(2)
Print list(0), list(2)                           ' expect: last first
Sub Twice(ByRef n As Integer)
  AddTo(n, n)
End Sub
Sub AddTo(ByRef n As Integer, more As Integer)
  n = n + more
End Sub
Dim n As Integer = 21
Twice n
Print n                                          ' expect: 42

Const kSeparator = "-"
Function Repeat(text As String, Optional separator As String = kSeparator, count As Integer = 2) As String
  Dim result As String
  For i As Integer = 1 To count
    If i > 1 Then result = result + separator
    result = result + text
  Next
  Return result
End Function
Print Repeat("a"), Repeat("b", "+"), Repeat("c", "", 4)   ' expect: a-a b+b cccc

Function Kind(value As Integer) As String
  Return "Integer"
End Function
Function Kind(value As Double) As String
  Return "Double"
End Function
Function Kind(value As String, more As String = "") As String
  Return "String"
End Function
Dim wide As Int64 = 1
Print Kind(1), Kind(1.5), Kind("x"), Kind(wide)  ' expect: Integer Double String Double

Print Args.Count, Args(0), Args(1)               ' expect: 2 one two
Function Forever(limit As Integer) As Integer
  Dim n As Integer
  Do
    n = n + 1
    If n > limit Then Return n
  Loop
End Function
Print Forever(4)                                 ' expect: 5
Function Picked(n As Integer) As String
  Select Case n
  Case 1
    Return "one"
  Case Else
    Try
      If n < 0 Then Raise New OutOfBoundsException Else Return "some"
    Catch e As OutOfBoundsException
      Return "below"
    End Try
  End Select
End Function
Print Picked(1), Picked(2), Picked(-1)           ' expect: one some below
Quit(7)
Print "not reached"
' expect-exit: 7

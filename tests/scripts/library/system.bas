' The environment, the clocks and random numbers.
Print System.EnvironmentVariable("HOME") <> "", System.EnvironmentVariable("no such variable") = ""   ' expect: True True
Print CountFields(System.Version, "."), Ticks > 0                     ' expect: 3 True
Dim began As Double = Microseconds
Print Abs(Ticks - began * 60 / 1e6) < 2                               ' expect: True

Dim dice As New Random(42)
Dim again As New Random(42)
Dim counts(6) As Integer
Dim same As Integer
For i As Integer = 1 To 6000
  Dim n As Integer = dice.InRange(1, 6)
  If n = again.InRange(1, 6) Then same = same + 1
  counts(n) = counts(n) + 1
Next
Print same, counts(0)                                                 ' expect: 6000 0
For i As Integer = 1 To 6
  If counts(i) < 850 Or counts(i) > 1150 Then Print "uneven", i, counts(i)
Next
Dim sum As Double
For i As Integer = 1 To 1000
  Dim x As Double = dice.Number
  If x < 0 Or x >= 1 Or Rnd < 0 Or Rnd >= 1 Then Print "outside"
  sum = sum + x
Next
Print sum > 450 And sum < 550                                         ' expect: True
Print RandomInRange(5, 5), dice.InRange(-2147483648, 2147483647) <> dice.InRange(-2147483648, 2147483647)   ' expect: 5 True
Try
  Print RandomInRange(2, 1)
Catch e As OutOfBoundsException
  Print e.Message                                                     ' expect: 2 is above 1; give the smaller number first
End Try

' Operators: precedence, kinds of numbers, wrapping, and what stays an Integer.
Print 2 + 3 * 4, (2 + 3) * 4, -2 ^ 2, 2 ^ 3 ^ 2      ' expect: 14 20 -4 64
Print 2 ^ -1, 10 - 4 - 3, 100 / 10 / 5              ' expect: 0.5 3 2
Print 7 \ 2, -7 \ 2, 7 Mod 3, -7 Mod 3, 7.5 Mod 2   ' expect: 3 -3 1 -1 1.5
Print 10 Mod 4 * 2, 1 & 2 + 3                       ' expect: 2 15
Print Not 1 = 2 And True, Not (True Or False)       ' expect: True False
Print True Xor True Or True                         ' expect: False
Print 6 And 3, 6 Or 3, 6 Xor 3, Not 0               ' expect: 2 7 5 -1
Print 1 < 2, 2 <= 1, 3 <> 3, 2 >= 2, 1.5 > 1        ' expect: True False False True True

Dim n As Integer = 2147483647
Print n + 1, -n - 2, n * 2                          ' expect: -2147483648 2147483647 -2
Dim wide As Int64 = n
Print wide + 1, wide * wide                         ' expect: 2147483648 4611686014132420609
Dim lowest As Integer = -2147483648
Print lowest \ -1, lowest Mod -1                    ' expect: -2147483648 0
Print &hFF, &HFFFFFFFF, &b101, &o17, &cFF8000       ' expect: 255 -1 5 15 &cFF8000
Print 1 / 3, 1e21, 0.1, 100.0, 1e-7                 ' expect: 0.3333333333333333 1e+21 0.1 100 1e-07

' Explicit conversions.
Print Integer(3.9), Integer(-3.9), Double("2.5x"), String(12) + "!"   ' expect: 3 -3 2.5 12!
Print Integer(True), Boolean(2), Integer("42 apples"), Int64(5)       ' expect: 1 True 42 5

' The right side is not looked at when the left one decides.
Function Says(text As String, result As Boolean) As Boolean
  Print text
  Return result
End Function
If Says("a", False) And Says("b", True) Then Print "no"    ' expect: a
If Says("c", True) Or Says("d", True) Then Print "yes"     ' expect: c
' expect: yes
Dim both As Boolean = Says("e", True) And Says("f", False) ' expect: e
' expect: f
Print both                                                 ' expect: False

' A comparison with what is no number is false either way.
Dim zero As Double
Dim nan As Double = zero / zero
If nan < 1 Then Print "less"
If Not (nan < 1) Then Print "not less"                     ' expect: not less
If nan <> nan Then Print "unequal"                         ' expect: unequal

' Operands keep their order when a call changes a variable.
Dim counter As Integer = 1
Function Bump() As Integer
  counter = counter + 10
  Return counter
End Function
Print counter + Bump()                                     ' expect: 12

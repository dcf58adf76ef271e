' Variants in operators: widening, joining, comparing, and mixes without meaning.
Dim i As Variant = 7
Dim big As Variant = Int64(4000000000)
Dim half As Variant = 0.5
Dim word As Variant = "Movie"
Dim yes As Variant = True
Dim none As Variant

Print i + 1, VarType(i + 1), i \ 2, i Mod 4, i / 2, i ^ 2          ' expect: 8 2 3 3 3.5 49
Print i + big, VarType(i + big), i + half, VarType(i * half)      ' expect: 4000000007 3 7.5 5
Print &h7FFFFFFF + i, -i, Not i, i And 3, i Or 8, i Xor 1         ' expect: -2147483642 -7 -8 3 15 6
Print word + "s", "the " + word, word & i & yes, VarType(word + "s")   ' expect: Movies the Movie Movie7True 8
Print Not yes, yes And False, yes Or False, yes Xor yes           ' expect: False False True False
Dim single As Single = 1.5
Dim s As Variant = single
Print VarType(s), VarType(-s), s + 1                              ' expect: 4 5 2.5

Print i = 7, 7.0 = i, i < big, half >= 0.5, i <> 8, i > 7.5       ' expect: True True True True True False
Print word = "MOVIE", word < "n", yes = True                      ' expect: True True True
Print i = "7", none = 0, none = "", none = Nil, none Is Nil       ' expect: False False False True True
Print VarType(none), VarType(yes), VarType(&cFF0000), VarType(Args)   ' expect: 0 11 16 4104

Dim block As New MemoryBlock(4)
Dim held As Variant = block
Print held = block, held Is block, held IsA MemoryBlock, i IsA MemoryBlock, held Is Nil   ' expect: True True True False False
Print MemoryBlock(held).Size, VarType(held)                       ' expect: 4 9
Print Integer(half + 3), String(i), Double(word), Boolean(i), Int64(big)   ' expect: 3 7 0 True 4000000000

' Conditions and assignments take what comes out of an operator.
If i > 3 And yes Then Print "both"                                ' expect: both
If Not (i = 3) Then Print "other"                                 ' expect: other
Dim sum As Variant = 0
For Each part As Variant In Array(1, 2, 3)
  sum = sum + part
Next
Dim total As Integer = sum
Print total                                                       ' expect: 6
For Each name As Variant In Array("a", "b")
  Print name + "!"
Next
' expect: a!
' expect: b!
Dim mixed() As Variant
mixed.Append 1
mixed.Append 2.5
mixed.Append "two"
For Each number As Double In mixed
  Print number
Next
' expect: 1
' expect: 2.5
' expect: 0

Function Kind(v As Variant) As String
  Select Case v
  Case Nil
    Return "nothing"
  Case 1, 2
    Return "small"
  Case "two"
    Return "a word"
  Case True
    Return "yes"
  Case Else
    Return "other"
  End Select
End Function
Print Kind(2), Kind(2.0), Kind("TWO"), Kind(True), Kind(Nil), Kind(block)   ' expect: small small a word yes nothing other

Sub Try1(name As String, v As Variant, w As Variant)
  Try
    Select Case name
    Case "+"
      Print v + w
    Case "<"
      Print v < w
    Case "And"
      Print v And w
    Case "-"
      Print -v
    Case "\"
      Print v \ w
    Case "&"
      Print "" & v
    Case "cast"
      Print RegEx(v) Is Nil
    Case "array"
      Dim list() As String = v
    End Select
  Catch e As TypeMismatchException
    Print e.Message
  Catch e As RuntimeException
    Print "other:", e.Message
  End Try
End Sub
Try1 "+", 1, "x"                    ' expect: “+” has no meaning between an Integer and a String
Try1 "+", "x", 0.5                  ' expect: “+” has no meaning between a String and a Double
Try1 "<", 1, "x"                    ' expect: “<” has no meaning between an Integer and a String
Try1 "<", Nil, 1                    ' expect: “<” has no meaning between Nil and an Integer
Try1 "And", True, 1                 ' expect: “And” has no meaning between a Boolean and an Integer
Try1 "And", 1.5, 1                  ' expect: “And” has no meaning between a Double and an Integer
Try1 "-", "x", Nil                  ' expect: “-” has no meaning before a String
Try1 "-", block, Nil                ' expect: “-” has no meaning before a MemoryBlock
Try1 "\", 1, 0                      ' expect: other: the divisor is 0
Try1 "&", block, Nil                ' expect: a MemoryBlock has no text
Try1 "cast", block, Nil             ' expect: other: the Variant holds a MemoryBlock, not a RegEx
Try1 "cast", Nil, Nil               ' expect: True
Try1 "array", Array(1), Nil         ' expect: other: the Variant holds an array Integer(), not an array String()
Try
  Dim wrong As RegEx = held
Catch e As IllegalCastException
  Print "cast"                      ' expect: cast
End Try

' Single, Int64 and Color wherever a type may stand, and the members of colors.
Dim c As Color = &c10FF80
Print c.Red, c.Green, c.Blue, RGB(1, 2, 300)             ' expect: 16 255 128 &c0102FF
Print c = RGB(16, 255, 128), Integer(c), Color(255)      ' expect: True 1113984 &c0000FF

Const kTone As Color = &c0000FF
Const kHalf As Single = 0.5, kBig As Int64 = 5
Print kTone, kHalf, kBig                                  ' expect: &c0000FF 0.5 5

Dim colors(1) As Color, singles(1, 1) As Single, longs() As Int64
colors(1) = kTone
singles(1, 0) = 0.1
longs.Append 7
longs.Append 5000000000
Print colors(0), colors(1), colors.IndexOf(kTone), singles(1, 0), longs(1), longs.IndexOf(7)   ' expect: &c000000 &c0000FF 1 0.1 5000000000 0

Sub Change(ByRef s As Single, ByRef n As Int64, ByRef tone As Color)
  s = s * 2
  n = n + 1
  tone = RGB(tone.Blue, tone.Green, tone.Red)
End Sub
Dim s As Single = 1.25, n As Int64 = 2147483647
Change(s, n, c)
Print s, n, c                                             ' expect: 2.5 2147483648 &c80FF10
Change(singles(1, 0), longs(1), colors(1))
Print singles(1, 0), longs(1), colors(1)                  ' expect: 0.2 5000000001 &cFF0000

Sub Defaults(Optional s As Single = 1.5, n As Int64 = 3, tone As Color = &c000001, v As Variant = Nil)
  Print s, n, tone, v
End Sub
Defaults()                                                ' expect: 1.5 3 &c000001 Nil
Defaults(2, 4, c, 5)                                      ' expect: 2 4 &c80FF10 5

Function Which(x As Integer) As String
  Return "Integer"
End Function
Function Which(x As Int64) As String
  Return "Int64"
End Function
Function Which(x As Single) As String
  Return "Single"
End Function
Function Which(x As Double) As String
  Return "Double"
End Function
Function Which(x As Color) As String
  Return "Color"
End Function
Function Which(x As Variant) As String
  Return "Variant"
End Function
Print Which(1), Which(n), Which(s), Which(1.5), Which(c), Which("x")   ' expect: Integer Int64 Single Double Color Variant

For i As Int64 = 4294967296 To 4294967298 Step 2
  Print i
Next
' expect: 4294967296
' expect: 4294967298
For t As Single = 0 To 1 Step 0.5
  Print t
Next
' expect: 0
' expect: 0.5
' expect: 1

Select Case c
Case &c000000, kTone
  Print "known"
Case &c80FF10
  Print "mixed"                                           ' expect: mixed
End Select
Select Case s
Case Is > 3.0
  Print "above"
Case 2 To 3
  Print "between"                                         ' expect: between
End Select
Select Case n
Case 2147483648
  Print "past 31 bits"                                    ' expect: past 31 bits
End Select

Print Integer(s), Int64(2.9), Single("0.25"), Single(7), Single(True), Boolean(n), Int64("9000000000")   ' expect: 2 2 0.25 7 1 True 9000000000
Print Double(c), String(c), String(s), c & "|" & s & "|" & n   ' expect: 8453904 &c80FF10 2.5 &c80FF10|2.5|2147483648
Print -s, s + 1, s = 2.5, n * 2, n \ 2, -n, Not n         ' expect: -2.5 3.5 True 4294967296 1073741824 -2147483648 -2147483649

Sub Fill(ByRef grid(,) As Integer, size As Integer)
  ReDim grid(size, size)
  grid(size, 0) = size
End Sub
Dim grid(0, 0) As Integer
Fill(grid, 3)
Print grid(3, 0), UBound(grid, 2), grid.Count             ' expect: 3 3 16
Function Diagonal(grid(,) As Integer) As Integer()
  Dim list() As Integer
  For i As Integer = 0 To UBound(grid)
    list.Append grid(i, i)
  Next
  Return list
End Function
grid(2, 2) = 9
Dim list() As Integer = Diagonal(grid)
Print list(2), list.Count                                 ' expect: 9 4
Rem A remark.
Dim words() As String = Array("b", "a")
Print Abs(n), Max(s, 1), Str(s), Str(c)                   ' expect: 2147483648 2.5 2.5 &c80FF10

Dim wide() As Double = Array(1, 2), any() As Variant = Array(1, "a", Nil, True)
Dim blocks() As Object = Array(New MemoryBlock(1), New MemoryBlock(2))
Print wide(1) / 4, any.Count, VarType(any(0)), VarType(any(2)), blocks(1) IsA MemoryBlock   ' expect: 0.5 4 2 0 True
For Each one As Variant In Array(1, "two", c)
  Print one
Next
' expect: 1
' expect: two
' expect: &c80FF10
Print Boolean("true"), Boolean("no"), Boolean("2"), Boolean(0.5), Boolean(0.0)   ' expect: True False True True False

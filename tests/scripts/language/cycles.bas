' What only keeps each other alive dies when the script ends, Destructors first, the oldest first.
Class Node
  name As String
  other As Node
  all() As Node
  any As Variant
  byName As Dictionary
  Sub Constructor(name As String)
    Self.name = name
  End Sub
  Sub Destructor()
    Print name, other Is Nil
  End Sub
End Class
Sub Pair(a As String, b As String)
  Dim x As New Node(a)
  Dim y As New Node(b)
  x.other = y
  y.other = x
End Sub
Pair("1", "2")
Dim alone As New Node("3")
alone.other = alone
Sub Holders()
  Dim x As New Node("4")
  x.all.Append x
  Dim y As New Node("5")
  y.any = y
  Dim z As New Node("6")
  z.byName = New Dictionary
  z.byName.Value("z") = z
End Sub
Holders
Dim freed As New Node("free")
Print "end"
' expect: end
' expect: free True
' expect: 1 False
' expect: 2 False
' expect: 3 False
' expect: 4 True
' expect: 5 True
' expect: 6 True

' Destructors at the end may make more.
Class Maker
  itself As Maker
  left As Integer
  Sub Destructor()
    If left = 0 Then Return
    Dim one As New Maker
    one.left = left - 1 : one.itself = one
    Print "made", left
  End Sub
End Class
Sub Start()
  Dim m As New Maker
  m.left = 2 : m.itself = m
End Sub
Start
' expect: made 2
' expect: made 1

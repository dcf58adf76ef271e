' Classes of a script: properties, methods, overriding, constructors, access, casts.
Class Shape
  Private hidden As Integer = 7
  name As String = "shape", sides() As Integer
  Const kKind = "figure"
  Shared made As Integer
  Shared log() As String
  Sub Constructor(name As String)
    Self.name = name
    made = made + 1
    log.Append name
  End Sub
  Function Area() As Double
    Return 0
  End Function
  Function Text As String
    Return name + " " + String(Area())
  End Function
  Function SameAs(other As Shape) As Boolean
    Return other.hidden = hidden And other Is Me
  End Function
  Protected Sub Add(n As Integer)
    sides.Append n
  End Sub
  Sub Add(n As Integer, m As Integer)
    Add n
    Add m
  End Sub
  Shared Function Total() As Integer
    Return made
  End Function
  Sub Scale(Assigns factor As Integer)
    hidden = hidden * factor
  End Sub
  Sub Entry(index As Integer, Assigns value As Integer)
    sides(index) = value
  End Sub
  Function Hidden2() As Integer
    Return hidden
  End Function
End Class

Dim list() As Shape
list.Append New Square(2)
list.Append New Shape("point")
list.Append New Cube(3)
For Each one As Shape In list
  Print one.Text
Next
' expect: square 4
' expect: point 0
' expect: cube 54
Print Shape.Total, Shape.made, Shape.kKind, Shape.log(1), list(0).Total   ' expect: 3 3 figure point 3
Print list(0) IsA Square, list(1) IsA Square, list(2) IsA Square, list(2) IsA Shape   ' expect: True False True True
Print Square(list(2)).side, list(2)   ' expect: 3 Cube
Try
  Print Cube(list(0)).side
Catch e As IllegalCastException
  Print e.Message                  ' expect: the object is of the class Square, not Cube
End Try
Print list(0).SameAs(list(0)), list(0).SameAs(list(1))   ' expect: True False
list(0).Add 4, 5
Print list(0).sides.Count, list(0).sides(1), list(1).sides.Count   ' expect: 2 5 0
list(0).Scale = 3
list(0).Entry(1) = 9
Print list(0).Hidden2, list(0).sides(1), list(1).Hidden2   ' expect: 21 9 7
Dim v As Variant = list(2)
Print v, Shape(v).Text, v IsA Cube   ' expect: Cube cube 54 True
Dim nobody As Square
Try
  Print nobody.Area
Catch e As NilObjectException
  Print e.Message                  ' expect: nobody is Nil
End Try
Try
  nobody.side = 1
Catch e As NilObjectException
  Print e.Message                  ' expect: nobody is Nil
End Try

' Declared in any order; overriding and Super.
Class Cube Inherits Square
  Sub Constructor(side As Integer)
    Super.Constructor(side)
    name = "cube"
  End Sub
  Function Area() As Double
    Return Super.Area() * 6
  End Function
End Class
Class Square Inherits Shape
  side As Integer
  Sub Constructor(side As Integer)
    Super.Constructor("square")
    Self.side = side
  End Sub
  Function Area() As Double
    Return side * side
  End Function
End Class

' Superclass constructors run first, by themselves; properties have their values before.
Class Base
  value As Integer = 5
  Sub Constructor(n As Integer = 1)
    Print "Base", value, n
    Prepare
  End Sub
  Sub Prepare()
  End Sub
End Class
Class Derived Inherits Base
  words() As String = Array("a", "b")
  grid(2, 3) As Integer
  Sub Constructor()
    Print "Derived", words.Count, value, grid.Count
  End Sub
  Sub Prepare()
    value = value * 2
    Print "prepared"
  End Sub
End Class
Class Heir Inherits Derived
End Class
Dim h As New Heir
' expect: Base 5 1
' expect: prepared
' expect: Derived 2 10 12
h.grid(1, 2) = 4
ReDim h.words(9)
Print h.grid(1, 2), h.words.Count   ' expect: 4 10

' A property by reference; a result of its own class; an array of arguments.
Sub Double_(ByRef n As Integer)
  n = n * 2
End Sub
Double_(h.value)
Print h.value                   ' expect: 20
Class Node
  key As String
  tail As Node
  Function Push(key As String) As Node
    Dim made As New Node
    made.key = key
    made.tail = Me
    Return made
  End Function
  Function Length() As Integer
    If tail Is Nil Then Return 1
    Return 1 + tail.Length
  End Function
End Class
Dim chain As New Node
chain = chain.Push("a").Push("b")
Print chain.key, chain.tail.key, chain.Length, chain.tail.tail.tail = Nil   ' expect: b a 3 True
For i As Integer = 1 To 3000
  chain = chain.Push(String(i))
Next
Print chain.Length                 ' expect: 3003

' From registered classes.
Class MyError Inherits RuntimeException
  place As Integer = 3
  Function Describe() As String
    Return Message + " at " + String(place)
  End Function
End Class
Class OwnError Inherits MyError
  Sub Constructor(place As Integer)
    Super.Constructor("own", 17)
    Self.place = place
  End Sub
End Class
Try
  Raise New MyError("text")
Catch e As OwnError
  Print "wrong"
Catch e As MyError
  Print e.Describe, e IsA RuntimeException   ' expect: text at 3 True
End Try
Try
  Raise New OwnError(8)
Catch e As RuntimeException
  Print e.Message, e.ErrorNumber, MyError(e).Describe, e   ' expect: own 17 own at 8 OwnError
End Try
Class Buffer Inherits MemoryBlock
  mark As String = "m"
  Function First() As Integer
    Return Byte(0)
  End Function
End Class
Dim bytes As New Buffer(4)
bytes.Byte(0) = 200
Print bytes.First, bytes.Size, bytes.mark   ' expect: 200 4 m
Dim d As New Dictionary
d.Value("b") = bytes
d.Value("c") = h
Print Buffer(d.Value("b")).mark, Heir(d.Value("c")).value   ' expect: m 20
Raise New OwnError(1)
' expect-error: classes.bas:199:1: OwnError: own

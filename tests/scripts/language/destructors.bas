' Destructors run at the last release, subclass first, properties afterwards.
Class Part
  name As String
  Sub Constructor(name As String)
    Self.name = name
  End Sub
  Sub Destructor()
    Print "part", name
  End Sub
End Class
Class Whole
  part As Part
  Sub Constructor(name As String)
    part = New Part(name)
  End Sub
  Sub Destructor()
    Print "whole", part.name
  End Sub
End Class
Class More Inherits Whole
  Sub Destructor()
    Print "more", part.name
  End Sub
End Class
Dim x As Whole = New More("a")
x = New Whole("b")
' expect: more a
' expect: whole a
' expect: part a
x = Nil
' expect: whole b
' expect: part b
Sub InRoutine()
  Dim local As New Part("local")
  Print "before"
End Sub
InRoutine
' expect: before
' expect: part local
Dim list(2) As Part
list(0) = New Part("0")
list(1) = New Part("1")
list.RemoveAt(0)                   ' expect: part 0
ReDim list(-1)                     ' expect: part 1
Dim v As Variant = New Part("v")
v = 1                              ' expect: part v
Dim d As New Dictionary
d.Value("k") = New Part("k")
d.Value("k") = 5                   ' expect: part k
d.Value("k") = New Part("k2")
d = Nil                            ' expect: part k2

' While an exception is on its way.
Sub Fails()
  Dim p As New Part("failing")
  Dim list() As Integer
  Print list(3)
End Sub
Try
  Fails
Catch e As OutOfBoundsException
  Print "caught"
End Try
' expect: part failing
' expect: caught

' A Constructor that raises; a Destructor that raises is reported and over.
Class Fragile
  Sub Constructor()
    Raise New RuntimeException("no")
  End Sub
  Sub Destructor()
    Print "fragile"
  End Sub
End Class
Try
  Dim f As New Fragile
Catch e
  Print e.Message
End Try
' expect: fragile
' expect: no
Class Angry
  Sub Destructor()
    Try
      Raise New RuntimeException("inside")
    Catch e
      Print "handled", e.Message
    End Try
    Raise New RuntimeException("outside")
  End Sub
End Class
Dim a As New Angry
a = Nil                            ' expect: handled inside
Print "on"                         ' expect: on

' One that puts itself back lives on, and dies without another run.
Dim kept As Phoenix
Class Phoenix
  text As String = "p"
  Sub Destructor()
    Print "rises"
    kept = Self
  End Sub
End Class
Dim bird As New Phoenix
bird = Nil                         ' expect: rises
Print kept.text                    ' expect: p
kept = Nil

' A Destructor clears the variable whose method let its instance go.
Dim shelf As New Dictionary
Class Sweeper
  Sub Destructor()
    shelf = Nil
    Print "swept"
  End Sub
End Class
shelf.Value("s") = New Sweeper
shelf.Value("s") = Nil             ' expect: swept
Print shelf Is Nil                 ' expect: True

Dim rack() As Clearer
Class Clearer
  Sub Destructor()
    rack = Nil
    Print "cleared"
  End Sub
End Class
rack.Append New Clearer
rack.Append New Clearer
ReDim rack(-1)
' expect: cleared
' expect: cleared
Print rack Is Nil                  ' expect: True

' A Destructor may recurse as deep as it likes, also above a full stack.
Class Deep
  Sub Destructor()
    Try
      Fall(0)
    Catch e As StackOverflowException
      Print "too deep"
    End Try
  End Sub
End Class
Sub Fall(n As Integer)
  If n = 9000 Then
    Dim one As New Deep
    one = Nil                      ' expect: too deep
  End If
  Fall(n + 1)
End Sub
Try
  Fall(0)
Catch e As StackOverflowException
  Print "deep"
End Try
' expect: deep

' A long chain dies without depth.
Class Link
  tail As Link
  Shared died As Integer
  Sub Destructor()
    died = died + 1
  End Sub
End Class
Dim head As Link
For i As Integer = 1 To 20000
  Dim one As New Link
  one.tail = head
  head = one
Next
head = Nil
Print Link.died                    ' expect: 20000
Dim last As New Part("last")
Print "end"                        ' expect: end
' expect: part last
' expect-error: destructors.bas:90:5: RuntimeException: outside
' expect-exit: 0

' krz track set: changes the properties of tracks.
#Include "changes.bas"

Try
  Dim change As New MovieChange(Args(0))
  For Each t As QTTrackKRZ In SelectTracks(change.Target, Args(1))
    SetProperties(t, change.Target)
  Next
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

Sub SetProperties(t As QTTrackKRZ, m As Movie)
  If CommandLine.Has("enable") Then t.TrackEnabled = True
  If CommandLine.Has("disable") Then t.TrackEnabled = False
  If CommandLine.Has("layer") Then t.Layer = Integer(Numbers("layer", 1)(0))
  If CommandLine.Has("volume") Then t.TrackVolume = Integer(Round(Numbers("volume", 1)(0) * 256))
  If CommandLine.Has("size") Then
    Dim size() As Double = Numbers("size", 2)
    t.SetTrackDimensions(size(0), size(1))
  End If
  If CommandLine.Has("move") Then
    Dim place() As Double = Numbers("move", 4)
    t.SetTrackMatrix(Integer(place(0)), Integer(place(1)), Integer(place(2)), Integer(place(3)))
  End If
  If CommandLine.Has("matrix") Then SetMatrix(t)
  If CommandLine.Has("offset") Then t.TimeOffset = ParseTime(CommandLine.Value("offset"), m)
  If t.Lasterror > 0 Or t.Lasterror < -1 Then Fail("track " + Str(t.TrackID) + " cannot be changed so (error " + Str(t.Lasterror) + ")", 1)
End Sub

' a,b,c,d,x,y: the picture's right edge, its lower edge, and its place.
Sub SetMatrix(t As QTTrackKRZ)
  Dim n() As Double = Numbers("matrix", 6)
  t.SetTrackRawMatrix(Fixed16(n(0)), Fixed16(n(1)), 0, Fixed16(n(2)), Fixed16(n(3)), 0, Fixed16(n(4)), Fixed16(n(5)), 1073741824)
End Sub

Function Fixed16(value As Double) As Integer
  If Abs(value) >= 32768 Then Raise New UsageError(Str(value) + " does not fit in a matrix")
  Return Integer(Round(value * 65536))
End Function

' The numbers of an option's value, separated by commas, or an x in a size.
Function Numbers(name As String, count As Integer) As Double()
  Dim text As String = CommandLine.Value(name)
  Dim number As New RegEx("^-?(\d+(\.\d*)?|\.\d+)$")
  Dim found() As Double
  For Each part As String In Split(ReplaceAll(Lowercase(text), "x", ","), ",")
    If Not (number.Search(Trim(part)) Is Nil) Then found.Append Val(Trim(part))
  Next
  If found.Count <> count Then Raise New UsageError("--" + name + " " + text + ": " + Counted(count, "number") + " belong there")
  Return found
End Function

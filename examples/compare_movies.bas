' Says in what two movies differ, for example before and after a tool has worked on one:
'   krz run examples/compare_movies.bas BEFORE.mov AFTER.mov
'
' Compared are the movies' clocks and lengths and, track by track in their order, what each track and its media say.
' Status 0: alike; 1: they differ.
If Args.Count <> 2 Then
  StdErr.WriteLine("usage: krz run compare_movies.bas BEFORE AFTER")
  Quit(2)
End If
Dim differences As Integer
Dim before As Movie = OpenMovie(Args(0))
Dim after As Movie = OpenMovie(Args(1))

Note("", "units a second", Str(before.TimeScale), Str(after.TimeScale))
Note("", "seconds", Seconds(before.Duration, before), Seconds(after.Duration, after))
Note("", "tracks", Str(before.TrackCountKRZ), Str(after.TrackCountKRZ))
For i As Integer = 1 To Min(before.TrackCountKRZ, after.TrackCountKRZ)
  CompareTracks(i, before.GetTrackIndexKRZ(i), after.GetTrackIndexKRZ(i))
Next
For i As Integer = before.TrackCountKRZ + 1 To after.TrackCountKRZ
  Note("", "track " + Str(i), "-", after.GetTrackIndexKRZ(i).MediaType)
Next
For i As Integer = after.TrackCountKRZ + 1 To before.TrackCountKRZ
  Note("", "track " + Str(i), before.GetTrackIndexKRZ(i).MediaType, "-")
Next
If differences = 0 Then
  Print "alike in all that was compared"
  Quit(0)
End If
Print differences, "differences"
Quit(1)

Sub CompareTracks(index As Integer, a As QTTrackKRZ, b As QTTrackKRZ)
  Dim place As String = "track " + Str(index) + " "
  Note(place, "id", Str(a.TrackID), Str(b.TrackID))
  Note(place, "media", a.MediaType, b.MediaType)
  Note(place, "enabled", Str(a.TrackEnabled), Str(b.TrackEnabled))
  Note(place, "starts", Seconds(a.TimeOffset, before), Seconds(b.TimeOffset, after))
  Note(place, "ends", Seconds(a.Duration, before), Seconds(b.Duration, after))
  Note(place, "size", Str(a.Width) + "x" + Str(a.Height), Str(b.Width) + "x" + Str(b.Height))
  Note(place, "layer", Str(a.Layer), Str(b.Layer))
  Note(place, "volume", Format(a.TrackVolume / 256, "0.00"), Format(b.TrackVolume / 256, "0.00"))
  Note(place, "matrix", Matrix(a), Matrix(b))
  Note(place, "samples", Str(a.MediaSampleCount), Str(b.MediaSampleCount))
  Note(place, "descriptions", Str(a.MediaSampleDescriptionCount), Str(b.MediaSampleDescriptionCount))
  For i As Integer = 1 To Min(a.MediaSampleDescriptionCount, b.MediaSampleDescriptionCount)
    CompareDescriptions(place + "description " + Str(i), a.MediaSampleDescriptionRaw(i), b.MediaSampleDescriptionRaw(i))
  Next
End Sub

' Two records are alike byte for byte; else the first place where they part is named.
Sub CompareDescriptions(place As String, a As MemoryBlock, b As MemoryBlock)
  If a Is Nil Or b Is Nil Then Return
  Dim common As Integer = Min(a.Size, b.Size)
  For i As Integer = 0 To common - 1
    If a.Byte(i) <> b.Byte(i) Then
      Note(place, ", byte " + Str(i), Hex(a.Byte(i)), Hex(b.Byte(i)))
      Return
    End If
  Next
  Note(place, ", bytes", Str(a.Size), Str(b.Size))
End Sub

' One line for what differs; nothing for what is alike.
Sub Note(place As String, what As String, a As String, b As String)
  If StrComp(a, b, 0) = 0 Then Return
  Print place + what + ":", a, "->", b
  differences = differences + 1
End Sub

Function Seconds(time As Integer, m As Movie) As String
  Return Format(time / m.TimeScale, "0.000")
End Function

Function Matrix(t As QTTrackKRZ) As String
  Dim a, b, u, c, d, v, x, y, w As Integer
  t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
  Dim text As String = Fixed(a) + " " + Fixed(b) + " " + Fixed(c) + " " + Fixed(d)
  Return "(" + text + ") at " + Fixed(x) + "," + Fixed(y)
End Function

Function Fixed(value As Integer) As String
  Return Format(value / 65536, "0.###")
End Function

' In what two movies differ, structurally.

' One line for each difference; none for movies that are alike. Tracks are told apart by their IDs.
Function Differences(before As Movie, after As Movie) As String()
  Dim lines() As String
  Note(lines, "movie: units a second", Str(before.TimeScale), Str(after.TimeScale))
  Note(lines, "movie: duration", ClockOf(before.Duration, before), ClockOf(after.Duration, after))
  For i As Integer = 1 To before.TrackCountKRZ
    Dim t As QTTrackKRZ = before.GetTrackIndexKRZ(i)
    Dim other As QTTrackKRZ = after.GetTrackIDKRZ(t.TrackID)
    If other Is Nil Then
      lines.Append "- " + TrackTitle(t)
    Else
      CompareTracks(lines, t, before, other, after)
    End If
  Next
  For i As Integer = 1 To after.TrackCountKRZ
    Dim t As QTTrackKRZ = after.GetTrackIndexKRZ(i)
    If before.GetTrackIDKRZ(t.TrackID) Is Nil Then lines.Append "+ " + TrackTitle(t) + ", " + ClockOf(t.Duration, after)
  Next
  Return lines
End Function

Sub CompareTracks(lines() As String, a As QTTrackKRZ, before As Movie, b As QTTrackKRZ, after As Movie)
  Dim place As String = TrackTitle(a) + ": "
  Note(lines, place + "media", a.MediaType, b.MediaType)
  Note(lines, place + "enabled", Str(a.TrackEnabled), Str(b.TrackEnabled))
  Note(lines, place + "offset", ClockOf(a.TimeOffset, before), ClockOf(b.TimeOffset, after))
  Note(lines, place + "duration", ClockOf(a.Duration, before), ClockOf(b.Duration, after))
  Note(lines, place + "size", Str(a.Width) + "x" + Str(a.Height), Str(b.Width) + "x" + Str(b.Height))
  Note(lines, place + "layer", Str(a.Layer), Str(b.Layer))
  Note(lines, place + "volume", Format(a.TrackVolume / 256, "0.###"), Format(b.TrackVolume / 256, "0.###"))
  Note(lines, place + "matrix", MatrixText(a), MatrixText(b))
  Dim clip As String = ClipRegion(a.TrackHandle), otherClip As String = ClipRegion(b.TrackHandle)
  If clip <> otherClip Then lines.Append "~ " + place + "clip: " + ClipText(clip) + " -> " + ClipText(otherClip)
  Note(lines, place + "edits", EditsText(a), EditsText(b))
  Note(lines, place + "references", ReferencesText(a), ReferencesText(b))
  Note(lines, place + "samples", Str(a.MediaSampleCount), Str(b.MediaSampleCount))
  Note(lines, place + "descriptions", Str(a.MediaSampleDescriptionCount), Str(b.MediaSampleDescriptionCount))
End Sub

Sub Note(lines() As String, what As String, before As String, after As String)
  If StrComp(before, after, 0) <> 0 Then lines.Append "~ " + what + ": " + before + " -> " + after
End Sub

Function TrackTitle(t As QTTrackKRZ) As String
  Return "track " + Str(t.TrackID) + " (" + t.MediaType + ")"
End Function

Function MatrixText(t As QTTrackKRZ) As String
  Dim a, b, u, c, d, v, x, y, w As Integer
  t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
  Return Fixed(a) + " " + Fixed(b) + " " + Fixed(c) + " " + Fixed(d) + " at " + Fixed(x) + "," + Fixed(y)
End Function

' "30x40 at 0,0, 36 bytes": the box of a region's record, and how large it is unless it is that box.
Function ClipText(record As String) As String
  If record = "" Then Return "none"
  If record = "?" Then Return "damaged"
  Dim n(3) As Integer
  For i As Integer = 0 To 3
    n(i) = Integer(Val("&h" + Mid(record, 5 + 4 * i, 4)))
    If n(i) >= 32768 Then n(i) = n(i) - 65536
  Next
  Dim text As String = Str(n(3) - n(1)) + "x" + Str(n(2) - n(0)) + " at " + Str(n(1)) + "," + Str(n(0))
  If Len(record) > 20 Then text = text + ", " + Counted(Len(record) \ 2, "byte")
  Return text
End Function

Function Fixed(value As Integer) As String
  Return Format(value / 65536, "0.####")
End Function

' "10 edits from 0 to 600: ...", short enough for a line.
Function EditsText(t As QTTrackKRZ) As String
  Dim parts() As String
  Dim start As Integer, duration As Integer
  Dim mediaStart As Int64, rate As Double
  Dim count As Integer = TrackEditCount(t.TrackHandle)
  For i As Integer = 1 To Min(count, 8)
    If Not TrackEdit(t.TrackHandle, i, start, duration, mediaStart, rate) Then Exit For
    Dim part As String = Str(duration)
    If mediaStart >= 0 Then part = part + "@" + Str(mediaStart)
    If rate <> 1 And mediaStart >= 0 Then part = part + "x" + Format(rate, "0.###")
    parts.Append part
  Next
  If count > 8 Then parts.Append "and " + Str(count - 8) + " more"
  Return Join(parts, " ")
End Function

Function ReferencesText(t As QTTrackKRZ) As String
  Dim parts() As String
  Dim type As String, id As Integer, number As Integer = 1
  While TrackReference(t.TrackHandle, number, type, id)
    parts.Append type + ":" + Str(id)
    number = number + 1
  Wend
  If parts.Count = 0 Then Return "none"
  Return Join(parts, " ")
End Function

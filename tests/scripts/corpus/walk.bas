' Asks every track of the movie that Args names for everything, walks its first times both ways, and
' prints the media types in movie order, then whatever is wrong.
Dim m As Movie = OpenMovie(Args(0))
Dim types As String = "-"
For i As Integer = 1 To m.TrackCountKRZ
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
  Dim kind As String = t.MediaType
  If AscB(kind) = 0 Then kind = "----"
  If i = 1 Then types = kind Else types = types + "+" + kind
Next
Print types
If m.GetTrackIndexKRZ(0) <> Nil Or m.GetTrackIndexKRZ(m.TrackCountKRZ + 1) <> Nil Then Print "a track beyond the ends"
For i As Integer = 1 To m.TrackCountKRZ
  AskAll m.GetTrackIndexKRZ(i), i
  WalkTimes m.GetTrackIndexKRZ(i), i
Next
CountByType "vide", False
CountByType "vide", True
CountByType "soun", False
CountByType "soun", True

Sub Check(right As Boolean, track As Integer, what As String)
  If Not right Then Print "track", track, what
End Sub

Sub AskAll(t As QTTrackKRZ, number As Integer)
  Check t.Lasterror = 0, number, "begins with an error"
  Check t.TrackID <> 0 And m.GetTrackIDKRZ(t.TrackID).TrackID = t.TrackID, number, "has no ID to find it by"
  Check t.MediaHandle <> 0 And t.MediaHandle = t.MediaHandle, number, "has no media"
  Check t.MediaHandlerHandle <> 0 And t.MediaHandlerHandle <> t.MediaHandle, number, "has no handler"
  Check t.MediaSampleCount >= 0, number, "counts samples below 0"
  Check t.Duration >= 0 And t.TimeOffset >= 0 And t.TimeOffset <= t.Duration, number, "lasts wrongly"
  Check t.FileCount >= 0, number, "has fewer files than none"
  Check t.Width >= 0 And t.Height >= 0, number, "has a size below 0"
  Dim seen As Integer = t.TrackVolume + t.Layer
  seen = t.TrackCreationTime
  seen = t.TrackModificationTime
  Dim enabled As Boolean = t.TrackEnabled

  Dim a, b, c, d, e, f, g, h, i As Integer
  t.GetTrackRawMatrix(a, b, c, d, e, f, g, h, i)
  Check i = 1073741824 And t.Lasterror = 0, number, "has no usual matrix"

  Dim descriptions As Integer = t.MediaSampleDescriptionCount
  For index As Integer = 1 To descriptions
    Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(index)
    Check t.Lasterror = 0, number, "fails to give a description"
    If raw Is Nil Then
      Print "track", number, "gives nothing for a description"
    Else
      raw.LittleEndian = False
      Check raw.Int32Value(0) = raw.Size, number, "gives a description of another size"
    End If
  Next
  Check t.MediaSampleDescriptionRaw(descriptions + 1) Is Nil, number, "gives one description too many"
  Check t.Lasterror < -1, number, "does not say why a description is missing"
End Sub

' At most 50 times forward; with a rate, and backward, the same ones must be met.
Sub WalkTimes(t As QTTrackKRZ, number As Integer)
  Dim times(), durations() As Integer
  Dim time, duration As Integer
  While times.Count < 50 And t.NextInterestingTimeKRZ(time, duration) And time >= 0
    Check t.Lasterror = 0 And duration > 0 And time + duration <= t.Duration, number, "has a wrong time"
    If times.Count > 0 Then
      Dim last As Integer = times(times.LastIndex)
      Check last + durations(times.LastIndex) <= time, number, "has times that overlap"
      ' At 0 a rate finds 0 again.
      If last > 0 Then
        Dim lastDuration As Integer
        Check t.NextInterestingTimeKRZ(last, lastDuration, 1), number, "finds nothing with a rate"
        Check last = time And lastDuration = duration, number, "differs with a rate"
      End If
    End If
    times.Append time
    durations.Append duration
    time = time + 1
  Wend
  Check t.Lasterror = 0, number, "ends with an error"
  If t.MediaSampleCount > 0 And t.Duration > t.TimeOffset Then Check times.Count > 0, number, "has samples but no times"
  If times.Count = 0 Then Return

  time = times(times.LastIndex) + durations(times.LastIndex)
  For i As Integer = times.LastIndex DownTo 0
    Check t.NextInterestingTimeKRZ(time, duration, -1), number, "finds nothing backward"
    Check time = times(i) And duration = durations(i), number, "differs backward"
  Next
  If times(0) > 0 Then
    Check t.NextInterestingTimeKRZ(time, duration, -1), number, "finds nothing backward"
    Check time = -1 And duration = 0 And t.Lasterror = 0, number, "has a time before its first"
  End If
End Sub

' Looking up by type meets the same tracks in the same order as looking at all of them.
Sub CountByType(kind As String, enabledOnly As Boolean)
  Dim place As Integer = 1
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If t.MediaType = kind And (t.TrackEnabled Or Not enabledOnly) Then
      Check ByType(kind, place, enabledOnly).TrackHandle = t.TrackHandle, i, "is not where its type says"
      place = place + 1
    End If
  Next
  If ByType(kind, place, enabledOnly) <> Nil Then Print "too many tracks of type", kind
End Sub
Function ByType(kind As String, place As Integer, enabledOnly As Boolean) As QTTrackKRZ
  If kind = "vide" Then Return m.GetVideoTrackKRZ(place, enabledOnly)
  Return m.GetSoundTrackKRZ(place, enabledOnly)
End Function

' References that lead nowhere, made up or of a closed movie, are errors and never crashes.
Sub AskAll(t As QTTrackKRZ)
  t.Lasterror = 55
  Print t.MediaSampleCount, t.Duration, t.TimeOffset, t.Layer, t.TrackCreationTime, t.TrackModificationTime, t.TrackEnabled, t.TrackID, t.Width, t.Height, "[" + t.MediaType + "]", t.MediaHandlerHandle, t.MediaHandle, t.FileCount, t.MediaSampleDescriptionCount, t.Lasterror
  Dim volume As Integer = t.TrackVolume
  Dim after As Integer = t.Lasterror
  t.Lasterror = 55
  Dim none As Boolean = t.MediaSampleDescriptionRaw(1) Is Nil
  Print volume, after, none, t.Lasterror
  Dim time As Integer = 12, duration As Integer = 34
  Print t.NextInterestingTimeKRZ(time, duration), time, duration, t.Lasterror
  time = 12
  Print t.NextInterestingTimeKRZ(time, duration, -1), time, duration, t.Lasterror
  Dim a As Integer = 1, b, c, d, e, f, g, h, i As Integer
  t.GetTrackRawMatrix(a, b, c, d, e, f, g, h, i)
  Print a, e, i, t.Lasterror
End Sub

Dim m As Movie = OpenMovie(TestMovie("two-tracks"))
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim good As Integer = t.TrackHandle
Dim media As Integer = t.MediaHandle

' A number of another kind of thing.
t.TrackHandle = media
AskAll t
' expect: 0 0 0 0 0 0 False 0 0 0 [] 0 0 0 0 55
' expect: 0 0 True -1
' expect: True -1 0 -2009
' expect: True -1 0 -2009
' expect: 0 0 0 -2009

' Numbers that never were a reference.
For Each rubbish As Integer In Array(1, -1, 12345, 2147483647, -2147483648, good + 1, good + 65536)
  t.TrackHandle = rubbish
  Dim time, duration As Integer
  If Not t.NextInterestingTimeKRZ(time, duration) Or time <> -1 Or t.Lasterror <> -2009 Then Print "wrong for", rubbish
  If t.Duration <> 0 Or t.TrackID <> 0 Or t.MediaHandle <> 0 Or t.MediaType <> "" Then Print "an answer for", rubbish
Next

t.TrackHandle = good
Print t.Duration, t.TrackID, t.MediaType             ' expect: 6000 1 vide

' The movie is closed under its tracks.
m.Close
AskAll t
' expect: 0 0 0 0 0 0 False 0 0 0 [] 0 0 0 0 55
' expect: 0 0 True -1
' expect: True -1 0 -2009
' expect: True -1 0 -2009
' expect: 0 0 0 -2009

' A movie opened later does not bring old references back to life.
Dim again As Movie = OpenMovie(TestMovie("two-tracks"))
Dim fresh As QTTrackKRZ = again.GetVideoTrackKRZ(1)
Print fresh.TrackHandle = good, t.Duration, fresh.Duration   ' expect: False 0 6000

' Whatever is cut out of a movie, moved or repeated, every picture keeps its time code.
Dim path As String = TestMovie("ntsc-long")
Dim m As Movie = OpenMovie(path, True)
Dim p As New QTTimeCodeCreationParametersKRZ
p.TimeScale = 30000 : p.FrameDuration = 1001 : p.Hours = 10
Print m.AddTimeCodeToMovieKRZ(p)   ' expect: 0

' Pictures whose time code is not 10:00:00;00 and as many frames as the picture lies behind the first.
Function Wrong(m As Movie) As Integer
  Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(m.TrackCountKRZ)
  Dim first As Integer = 10 * 107892
  Dim wrong As Integer, seen As Integer, time As Integer, duration As Integer
  While video.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    Dim picture As Integer = TrackMediaTime(video.TrackHandle, time) \ 1001
    Dim c As QTTimeCodeKRZ = t.TimeCodeAtTime(TrackMediaTime(t.TrackHandle, time))
    If c Is Nil Then
      wrong = wrong + 1
    ElseIf c.FrameNumber <> first + picture Then
      wrong = wrong + 1
    End If
    seen = seen + 1
    time = time + duration
  Wend
  If seen < 100 Then Return -1
  Return wrong
End Function
Print Wrong(m)                     ' expect: 0

Dim random As New Random(7)
Dim worst As Integer
For i As Integer = 1 To 25
  Dim length As Integer = m.Duration
  Dim start As Integer = random.InRange(0, length - 1000)
  Dim duration As Integer = random.InRange(1, 900)
  Dim failure As Integer
  If i Mod 3 = 0 Then
    failure = m.InsertMovieSegmentKRZ(m, start, duration, random.InRange(0, length))
  Else
    failure = m.DeleteMovieSegmentKRZ(start, duration)
  End If
  If failure <> 0 Then Print "edit", i, failure
  worst = Max(worst, Wrong(m))
Next
Print worst                        ' expect: 0
m.Save
Print Wrong(OpenMovie(path))       ' expect: 0

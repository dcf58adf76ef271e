' krz timecode show: the time code of a movie at a time, and how it counts.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"
#Include "timecodes.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim selector As String = "tmcd"
  If CommandLine.Has("track") Then selector = CommandLine.Value("track")
  If selector = "tmcd" And Not m.HasTimeCodeTrackKRZ Then Fail(Args(0) + " has no timecode track; krz timecode add makes one", 1)
  Dim tracks() As QTTrackKRZ = SelectTracks(m, selector)
  Dim time As Integer = 0
  If CommandLine.Has("at") Then
    time = ParseTime(CommandLine.Value("at"), m)
    If time >= m.Duration Then Raise New UsageError("the movie ends at " + ClockOf(m.Duration, m))
  Else
    time = tracks(0).TimeOffset
  End If
  If CommandLine.Has("json") Then
    Print ShownDocument(m, tracks(0), time).ToString(True)
  Else
    For i As Integer = 0 To tracks.LastIndex
      If i > 0 Then Print ""
      Show(m, tracks(i), time)
    Next
  End If
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

' The time code that a track shows at a time of the movie. Ends the command when there is none.
Function ShownAt(m As Movie, t As QTTrackKRZ, time As Integer) As QTTimeCodeKRZ
  Dim mediaTime As Integer = TrackMediaTime(t.TrackHandle, time)
  If mediaTime < 0 Then Fail("track " + Str(t.TrackID) + " shows no time code at " + ClockOf(time, m), 1)
  Dim c As QTTimeCodeKRZ = t.TimeCodeAtTime(mediaTime)
  If Not (c Is Nil) Then Return c
  If t.MediaType <> "tmcd" Then Fail("track " + Str(t.TrackID) + " (" + t.MediaType + ") is no timecode track", 1)
  Fail(OfFile(Args(0), "track " + Str(t.TrackID) + ": " + MovieFailure), 3)
  Return Nil
End Function

Sub Show(m As Movie, t As QTTrackKRZ, time As Integer)
  Dim c As QTTimeCodeKRZ = ShownAt(m, t, time)
  Print PadRight(t.TimeCodeToString(c), 14) + "frame " + Str(c.FrameNumber) + ", at " + ClockOf(time, m)
  Print "track         " + Str(t.TrackID) + ", " + EnabledText(t)
  If c.SourceName <> "" Then Print "source        " + c.SourceName
  Print "rate          " + RateText(c)
  If c.UseTimeCode Then
    Print "labels        " + Counted(c.NumberOfFrames, "frame") + " a second, " + FlagText(c)
  Else
    Print "labels        " + FlagText(c)
  End If
  Dim frames As Int64 = FramesOf(m, t, c)
  Dim length As String = Counted(frames, "frame")
  If c.UseTimeCode Then length = LabelLength(t, c, frames) + " of labels, " + length
  Print "duration      " + ClockOf(t.Duration - t.TimeOffset, m) + " by the clock, " + length
  For Each fault As String In FaultsOf(c)
    Print "not legal     " + fault
  Next
End Sub

Function EnabledText(t As QTTrackKRZ) As String
  If t.TrackEnabled Then Return "enabled" Else Return "disabled"
End Function

' How many frames pass while the track lasts.
Function FramesOf(m As Movie, t As QTTrackKRZ, c As QTTimeCodeKRZ) As Int64
  Dim units As Int64 = t.Duration - t.TimeOffset
  Return Int64(Round(units / m.TimeScale * c.TimeScale / c.FrameDuration))
End Function

' That many frames as a label.
Function LabelLength(t As QTTrackKRZ, c As QTTimeCodeKRZ, frames As Int64) As String
  Dim length As QTTimeCodeKRZ = TimeCodeLike(c, 0, t)
  length.Use24Hours = False
  length.FrameNumber = Integer(frames)
  t.FrameNumberToTimeCode(length)
  Return t.TimeCodeToString(length)
End Function

Function ShownDocument(m As Movie, t As QTTrackKRZ, time As Integer) As JSONItem
  Dim c As QTTimeCodeKRZ = ShownAt(m, t, time)
  Dim document As JSONItem = TimeCodeDocument(c, t)
  document.Value("track") = t.TrackID
  document.Value("enabled") = t.TrackEnabled
  document.Value("time") = time
  document.Value("movieTimeScale") = m.TimeScale
  document.Value("duration") = t.Duration - t.TimeOffset
  document.Value("seconds") = (t.Duration - t.TimeOffset) / m.TimeScale
  Dim frames As Int64 = FramesOf(m, t, c)
  document.Value("frames") = frames
  document.Value("labelDuration") = Nil
  If c.UseTimeCode Then document.Value("labelDuration") = LabelLength(t, c, frames)
  Dim faults As New JSONItem("[]")
  For Each fault As String In FaultsOf(c)
    faults.Append fault
  Next
  document.Value("faults") = faults
  Return document
End Function

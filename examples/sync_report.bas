' Shows where sound and picture of a movie begin and end, and warns where they part:
'   krz run examples/sync_report.bas MOVIE...
'
' A difference of more than 40 milliseconds at the start, or of a fifth of a second at the end, is what people notice.
Const kStartTolerance = 0.04, kEndTolerance = 0.2

If Args.Count = 0 Then
  StdErr.WriteLine("usage: krz run sync_report.bas MOVIE...")
  Quit(2)
End If
Dim warnings As Integer
For Each path As String In Args
  Dim m As Movie = OpenMovie(path)
  Print path
  ShowTracks(m)
  Compare(m)
Next
If warnings > 0 Then Quit(1)

Sub ShowTracks(m As Movie)
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim state As String = ""
    If Not t.TrackEnabled Then state = " (disabled)"
    Print "  track", i, t.MediaType, "from", Seconds(t.TimeOffset, m), "to", Seconds(t.Duration, m) + state
    ShowGaps(t, m)
  Next
End Sub

' Stretches inside the track where nothing is shown: from the end of one sample to the start of the next.
Sub ShowGaps(t As QTTrackKRZ, m As Movie)
  Dim time As Integer, duration As Integer
  Dim reached As Integer = t.TimeOffset
  Dim gaps As Integer
  If t.MediaSampleCount > 200000 Then Return    ' a look at each sample would take long
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    If time > reached Then
      gaps = gaps + 1
      If gaps <= 5 Then Print "    nothing from", Seconds(reached, m), "to", Seconds(time, m)
    End If
    reached = time + duration
    time = reached
  Wend
  If gaps > 5 Then Print "    and", gaps - 5, "more gaps"
End Sub

' The first enabled picture track against every enabled sound track.
Sub Compare(m As Movie)
  Dim picture As QTTrackKRZ = m.GetVideoTrackKRZ(1, True)
  If picture Is Nil Then Return
  Dim i As Integer = 1
  Dim sound As QTTrackKRZ = m.GetSoundTrackKRZ(i, True)
  While Not (sound Is Nil)
    Dim atStart As Double = (sound.TimeOffset - picture.TimeOffset) / m.TimeScale
    Dim atEnd As Double = (sound.Duration - picture.Duration) / m.TimeScale
    If Abs(atStart) > kStartTolerance Then Warn("sound track " + Str(i) + " starts " + Apart(atStart) + " than the picture")
    If Abs(atEnd) > kEndTolerance Then Warn("sound track " + Str(i) + " ends " + Apart(atEnd) + " than the picture")
    i = i + 1
    sound = m.GetSoundTrackKRZ(i, True)
  Wend
End Sub

Sub Warn(text As String)
  Print "  warning: " + text
  warnings = warnings + 1
End Sub

Function Apart(seconds As Double) As String
  If seconds > 0 Then Return Format(seconds, "0.000") + " s later"
  Return Format(-seconds, "0.000") + " s earlier"
End Function

Function Seconds(time As Integer, m As Movie) As String
  Return Format(time / m.TimeScale, "0.000") + " s"
End Function

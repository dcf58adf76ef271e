' krz sound levels: how loud sound tracks are over time, channel by channel.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"
#Include "sound.bas"
#Include "levelsPicture.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim selector As String
  If Args.Ubound > 0 Then selector = Args(1)
  If CommandLine.Has("json") And CommandLine.Has("csv") Then Raise New UsageError("--csv and --json exclude each other")
  Dim all() As TrackLevels
  For Each t As QTTrackKRZ In SoundTracks(m, selector)
    If Not CanMeasureSound(t.TrackHandle) Then StdErr.WriteLine("krz: " + OfFile(Args(0), "track " + Str(t.TrackID) + " is in a format that is not decoded; its levels are shown as silence"))
    all.Append New TrackLevels(t, m)
  Next
  If CommandLine.Has("output") Then
    Draw(all, m, CommandLine.Value("output"))
  ElseIf CommandLine.Has("json") Then
    ShowAsJSON(all, m)
  ElseIf CommandLine.Has("csv") Then
    ShowAsCSV(all, m)
  Else
    Show(all, m)
  End If
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Dim advice As String
  If e.ErrorNumber = 17 Then advice = "; -f lets it be replaced"
  If e.ErrorNumber > 0 Then Fail(e.Message + advice, 5)
  Fail(OfFile(Args(0), e.Message), 3)
End Try

Sub Show(all() As TrackLevels, m As Movie)
  For i As Integer = 0 To all.LastIndex
    If i > 0 Then Print ""
    Dim levels As TrackLevels = all(i)
    Print "track " + Str(levels.ID) + ": " + Counted(levels.Channels, "channel") + ", " + Counted(levels.Count, "interval") + ", dB below full scale"
    Dim title As String = "        time"
    For channel As Integer = 1 To levels.Channels
      title = title + PadLeft("peak " + Str(channel), 10) + PadLeft("rms " + Str(channel), 9)
    Next
    Print title
    For place As Integer = 0 To levels.Count - 1
      Dim line As String = PadLeft(ClockOf(levels.StartOf(place), m), 12)
      For channel As Integer = 0 To levels.Channels - 1
        line = line + PadLeft(DecibelText(levels.Peak(place, channel)), 10) + PadLeft(DecibelText(levels.Mean(place, channel)), 9)
      Next
      Print line
    Next
  Next
End Sub

Sub ShowAsCSV(all() As TrackLevels, m As Movie)
  Print "track,time,channel,peak,rms"
  For Each levels As TrackLevels In all
    For place As Integer = 0 To levels.Count - 1
      For channel As Integer = 0 To levels.Channels - 1
        Print Str(levels.ID) + "," + Str(levels.StartOf(place)) + "," + Str(channel + 1) + "," + Format(levels.Peak(place, channel), "0.######") + "," + Format(levels.Mean(place, channel), "0.######")
      Next
    Next
  Next
End Sub

' One document; levels as numbers, 1 for full scale.
Sub ShowAsJSON(all() As TrackLevels, m As Movie)
  Dim list As New JSONItem("[]")
  For Each levels As TrackLevels In all
    Dim item As New JSONItem
    item.Value("id") = levels.ID
    item.Value("timeScale") = m.TimeScale
    item.Value("start") = levels.StartOf(0)
    item.Value("every") = levels.Every
    item.Value("decoded") = levels.IsDecoded
    Dim channels As New JSONItem("[]")
    For channel As Integer = 0 To levels.Channels - 1
      Dim one As New JSONItem
      Dim peaks As New JSONItem("[]")
      Dim means As New JSONItem("[]")
      For place As Integer = 0 To levels.Count - 1
        peaks.Append Round(levels.Peak(place, channel) * 1000000) / 1000000
        means.Append Round(levels.Mean(place, channel) * 1000000) / 1000000
      Next
      one.Value("peak") = peaks
      one.Value("rms") = means
      channels.Append one
    Next
    item.Value("channels") = channels
    list.Append item
  Next
  Print list.ToString(True)
End Sub

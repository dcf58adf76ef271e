' krz edit list: the edits of tracks.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim selector As String = "all"
  If CommandLine.Has("track") Then selector = CommandLine.Value("track")
  Dim tracks() As QTTrackKRZ = SelectTracks(m, selector)
  If CommandLine.Has("json") Then ListAsJSON(tracks, m) Else List(tracks, m)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub List(tracks() As QTTrackKRZ, m As Movie)
  For Each t As QTTrackKRZ In tracks
    Print "track " + Str(t.TrackID) + " (" + t.MediaType + ")"
    Print CommandLine.Heading("   #        from          to     duration      media time      rate")
    Dim start As Integer, duration As Integer, mediaStart As Int64, rate As Double
    For i As Integer = 1 To TrackEditCount(t.TrackHandle)
      If Not TrackEdit(t.TrackHandle, i, start, duration, mediaStart, rate) Then Exit For
      Dim line As String = PadLeft(Str(i), 4) + PadLeft(ClockOf(start, m), 13) + PadLeft(ClockOf(Int64(start) + duration, m), 13) + PadLeft(ClockOf(duration, m), 13)
      If mediaStart < 0 Then
        Print line + "           empty"
      Else
        Print line + PadLeft(Str(mediaStart), 16) + PadLeft(Format(rate, "0.####"), 10)
      End If
    Next
  Next
End Sub

Sub ListAsJSON(tracks() As QTTrackKRZ, m As Movie)
  Dim list As New JSONItem("[]")
  For Each t As QTTrackKRZ In tracks
    Dim start As Integer, duration As Integer, mediaStart As Int64, rate As Double
    Dim edits As New JSONItem("[]")
    For i As Integer = 1 To TrackEditCount(t.TrackHandle)
      If Not TrackEdit(t.TrackHandle, i, start, duration, mediaStart, rate) Then Exit For
      Dim edit As New JSONItem
      edit.Value("start") = start
      edit.Value("duration") = duration
      edit.Value("mediaStart") = mediaStart
      edit.Value("rate") = rate
      edits.Append edit
    Next
    Dim item As New JSONItem
    item.Value("id") = t.TrackID
    item.Value("timeScale") = m.TimeScale
    item.Value("edits") = edits
    list.Append item
  Next
  Print list.ToString(True)
End Sub

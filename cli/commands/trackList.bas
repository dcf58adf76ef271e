' krz track list: the tracks of a movie.
#Include "messages.bas"
#Include "times.bas"

Dim m As Movie
Try
  m = OpenMovie(Args(0))
Catch e As IOException
  Fail(e.Message, 3)
End Try
If CommandLine.Has("json") Then ListAsJSON(m) Else List(m)

Sub List(m As Movie)
  Print CommandLine.Heading("  #    id  media  enabled     offset     duration       size  layer  volume  matrix")
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim line As String = PadLeft(Str(i), 3) + PadLeft(Str(t.TrackID), 6) + "  " + PadRight(t.MediaType, 7)
    line = line + PadRight(YesOrNo(t.TrackEnabled), 6) + PadLeft(ClockOf(t.TimeOffset, m), 12) + PadLeft(ClockOf(t.Duration, m), 13)
    line = line + PadLeft(Str(t.Width) + "x" + Str(t.Height), 11) + PadLeft(Str(t.Layer), 7)
    Print line + PadLeft(Format(t.TrackVolume / 256, "0.00"), 8) + "  " + Matrix(t)
  Next
End Sub

Function YesOrNo(value As Boolean) As String
  If value Then Return "yes" Else Return "no"
End Function

' What matters of it: the identity says nothing, a move its place.
Function Matrix(t As QTTrackKRZ) As String
  Dim a, b, u, c, d, v, x, y, w As Integer
  t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
  Dim place As String
  If x <> 0 Or y <> 0 Then place = "at " + Format(x / 65536, "0.##") + "," + Format(y / 65536, "0.##")
  If a = 65536 And b = 0 And c = 0 And d = 65536 Then Return place
  Return Format(a / 65536, "0.###") + " " + Format(b / 65536, "0.###") + " " + Format(c / 65536, "0.###") + " " + Format(d / 65536, "0.###") + " " + place
End Function

Sub ListAsJSON(m As Movie)
  Dim list As New JSONItem("[]")
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim item As New JSONItem
    item.Value("index") = i
    item.Value("id") = t.TrackID
    item.Value("mediaType") = t.MediaType
    item.Value("enabled") = t.TrackEnabled
    item.Value("timeScale") = m.TimeScale
    item.Value("offset") = t.TimeOffset
    item.Value("duration") = t.Duration
    item.Value("width") = t.Width
    item.Value("height") = t.Height
    item.Value("layer") = t.Layer
    item.Value("volume") = t.TrackVolume / 256
    list.Append item
  Next
  Print list.ToString(True)
End Sub

' krz aperture show: the sizes of tracks in the aperture modes.
#Include "messages.bas"
#Include "selectors.bas"
#Include "apertures.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim selector As String = "all"
  If Args.Ubound > 0 Then selector = Args(1)
  Dim tracks() As QTTrackKRZ = SelectTracks(m, selector)
  If CommandLine.Has("json") Then ShowAsJSON(tracks) Else Show(tracks, selector = "all")
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

' Of all tracks only those with a picture.
Sub Show(tracks() As QTTrackKRZ, onlySeen As Boolean)
  Print "    id  media        size          clean       production        encoded"
  For Each t As QTTrackKRZ In tracks
    If onlySeen And t.Width = 0 And t.Height = 0 Then Continue
    Print PadLeft(Str(t.TrackID), 6) + "  " + PadRight(t.MediaType, 5) + PadLeft(Str(t.Width) + "x" + Str(t.Height), 12) + PadLeft(ApertureText(t, "clea"), 15) + PadLeft(ApertureText(t, "prod"), 17) + PadLeft(ApertureText(t, "enco"), 15)
  Next
End Sub

Sub ShowAsJSON(tracks() As QTTrackKRZ)
  Dim list As New JSONItem("[]")
  For Each t As QTTrackKRZ In tracks
    Dim item As New JSONItem
    item.Value("id") = t.TrackID
    item.Value("mediaType") = t.MediaType
    item.Value("width") = t.Width
    item.Value("height") = t.Height
    item.Value("apertures") = AperturesDocument(t)
    list.Append item
  Next
  Print list.ToString(True)
End Sub

' krz map: one picture of a movie.
#Include "messages.bas"
#Include "chapterLists.bas"
#Include "canvas.bas"
#Include "mapTracks.bas"
#Include "mapTimeline.bas"
#Include "mapFrame.bas"

Const kWidth = 1200
Const kMostLanes = 60

Try
  Dim path As String = CommandLine.Value("output")
  Dim form As String = Lowercase(Right(path, 4))
  If Not CommandLine.Has("output") Then Raise New UsageError("where should the map go? -o map.svg or -o map.png")
  If form <> ".svg" And form <> ".png" And path <> "-" Then Raise New UsageError("a map is an .svg or a .png file, not """ + path + """")
  Dim m As Movie = OpenMovie(Args(0))
  Try
    Draw(m, path, form = ".png")
  Catch e As IOException
    Fail(e.Message, 5)
  Catch e As UnsupportedFormatException
    Fail(e.Message + "; an .svg map needs neither fonts nor libpng", 1)
  End Try
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub Draw(m As Movie, path As String, asPicture As Boolean)
  Dim name As String = NthField(Args(0), "/", CountFields(Args(0), "/"))
  Dim lists() As ChapterList = ChapterLists(m)
  Dim tracks() As MapTrack = MapTracks(m, lists)
  Dim timeline As New Timeline(m, tracks, lists)
  Dim frame As New FramePanel(m, tracks)
  Dim height As Integer = 76 + timeline.Height + frame.Height + 16
  Dim c As Canvas
  If asPicture Then c = New PNGCanvas(kWidth, height) Else c = New SVGCanvas(kWidth, height, "Map of " + name)
  c.Text(c.Fitted(name, 24, kWidth - 80), 32, 42, 22, &c1F2328, True)
  c.Text(Summary(m, tracks.Count), 32, 62, 12, &c5B636D)
  timeline.Draw(c, 76)
  frame.Draw(c, 76 + timeline.Height)
  c.Finish(path, CommandLine.Has("force"))
End Sub

Function Summary(m As Movie, drawn As Integer) As String
  Dim text As String = ClockText(m.Duration, m.TimeScale) + "  ·  " + Str(m.TimeScale) + " units a second  ·  " + Counted(m.TrackCountKRZ, "track")
  If m.TrackCountKRZ > drawn Then text = text + ", the first " + Str(drawn) + " of them here"
  Return text
End Function

Function MapTracks(m As Movie, lists() As ChapterList) As MapTrack()
  Dim tracks() As MapTrack
  For i As Integer = 1 To Min(m.TrackCountKRZ, kMostLanes)
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim isChapters As Boolean = False
    For Each list As ChapterList In lists
      If list.Track Is Nil Then Continue
      If list.Track.TrackID = t.TrackID Then isChapters = True
    Next
    tracks.Append New MapTrack(t, i, isChapters)
  Next
  Return tracks
End Function

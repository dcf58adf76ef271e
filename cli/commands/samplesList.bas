' krz samples list: every sample of one track.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim t As QTTrackKRZ = SelectTrack(m, Args(1))
  Dim form As String = "text"
  If CommandLine.Has("csv") Then form = "csv"
  If CommandLine.Has("json") Then form = "json"
  If CommandLine.Has("csv") And CommandLine.Has("json") Then Raise New UsageError("--csv and --json exclude each other")
  Dim start As Integer = 0
  Dim finish As Integer = -1
  If CommandLine.Has("from") Or CommandLine.Has("to") Then finish = m.Duration
  If CommandLine.Has("from") Then start = ParseTime(CommandLine.Value("from"), m)
  If CommandLine.Has("to") Then finish = ParseTime(CommandLine.Value("to"), m)
  If finish >= 0 And finish < start Then Raise New UsageError("--to lies before --from")
  If form = "text" Then Print "track " + Str(t.TrackID) + " (" + t.MediaType + "): " + Counted(t.MediaSampleCount, "sample") + ", " + Str(MediaTimeScale(t.TrackHandle)) + " units a second"
  PrintSamples(t.TrackHandle, form, start, finish)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

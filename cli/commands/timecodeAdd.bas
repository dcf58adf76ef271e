' krz timecode add: a timecode track below the pictures, as long as the movie.
#Include "changes.bas"
#Include "timecodes.bas"

Try
  If CommandLine.Has("start") And CommandLine.Has("counter") Then Raise New UsageError("a track shows time codes from --start on or numbers from --counter on, not both")
  Dim change As New MovieChange(Args(0))
  Dim m As Movie = change.Target
  If m.HasTimeCodeTrackKRZ Then
    If Not CommandLine.Has("replace") Then Fail(Args(0) + " has a timecode track already; --replace takes it out, krz timecode show shows it", 1)
    m.DeleteTimeCodeTracksKRZ
  End If
  If m.GetVideoTrackKRZ(1) Is Nil Then Fail(Args(0) + " has no pictures to put a timecode track below", 1)
  Dim p As QTTimeCodeCreationParametersKRZ = Wanted(m)
  Dim code As Integer = m.AddTimeCodeToMovieKRZ(p)
  If code <> 0 Then Fail("the timecode track cannot be added: " + MovieFailure + " (error " + Str(code) + ")", 1)
  If Not CommandLine.Has("dry-run") Then
    Dim t As QTTrackKRZ = SelectTrack(m, "tmcd")
    Say("time codes from " + t.TimeCodeToString(t.TimeCodeAtTime(0)) + " to " + t.TimeCodeToString(t.TimeCodeAtTime(m.Duration - 1)))
  End If
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As InvalidArgumentException
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Function Wanted(m As Movie) As QTTimeCodeCreationParametersKRZ
  Dim start As String = "00:00:00:00"
  If CommandLine.Has("start") Then start = CommandLine.Value("start")
  Dim rate As FrameRate = WantedRate(m, start)
  Dim p As New QTTimeCodeCreationParametersKRZ
  p.TimeScale = rate.TimeScale
  p.FrameDuration = rate.FrameDuration
  p.NumberOfFrames = rate.Frames
  p.DropFrames = rate.Drops
  p.Use24Hours = Not CommandLine.Has("no-wrap")
  p.DisplayTimeCode = CommandLine.Has("display")
  p.SourceName = CommandLine.Value("source")
  If CommandLine.Has("counter") Then
    p.UseTimeCode = False
    Dim counter As New QTTimeCodeKRZ
    counter.Counter = ParseTimeCode(CommandLine.Value("counter"), kCounter, 0)
    p.CounterStartValue = counter.Counter
    Return p
  End If
  p.IsNeg = Left(start, 1) = "-"
  Dim flags As Integer
  If p.DropFrames Then flags = flags + kDropFrame
  If p.Use24Hours Then flags = flags + kWraps
  If p.IsNeg Then flags = flags + kNegative
  Dim c As New QTTimeCodeKRZ
  c.Counter = ParseTimeCode(start, flags, rate.Frames)
  p.Hours = c.Hours
  p.Minutes = c.Minutes Mod 128
  p.Seconds = c.Seconds
  p.Frames = c.Frames
  Return p
End Function

' As --rate says, else that of the first pictures; a start with a semicolon asks for drop-frame then.
Function WantedRate(m As Movie, start As String) As FrameRate
  If CommandLine.Has("rate") Then Return New FrameRate(CommandLine.Value("rate"))
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  Dim data As MemoryBlock, record As MemoryBlock
  Dim time As Integer, duration As Integer, description As Integer, count As Integer, flags As Integer
  If Not t.GetMediaSample(data, time, duration, record, description, 1, count, flags) Or duration <= 0 Then
    Raise New UsageError("the pictures of " + Args(0) + " have no rate; name one: --rate 25")
  End If
  Dim text As String = Str(MediaTimeScale(t.TrackHandle)) + "/" + Str(duration)
  If InStr(start, ";") > 0 Then text = text + "df"
  Return New FrameRate(text)
End Function

' krz timecode convert: a time code, a number of a frame or a time, as all three.
#Include "messages.bas"
#Include "timecodes.bas"

Try
  If Not CommandLine.Has("rate") Then Raise New UsageError("say at which rate: --rate 25, --rate 29.97df")
  Dim rate As New FrameRate(CommandLine.Value("rate"))
  ' Time codes are counted by a track, which needs no file.
  Dim m As Movie = NewMovie(600)
  Dim handle As Integer = NewTrack(m, "tmcd", 600)
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(1)
  Dim c As QTTimeCodeKRZ = Converted(Args(0), rate, t)
  If CommandLine.Has("json") Then
    Dim document As JSONItem = TimeCodeDocument(c, t)
    document.Value("seconds") = SecondsOf(c)
    Print document.ToString(True)
  Else
    Print "time code   " + t.TimeCodeToString(c)
    Print "frame       " + Str(c.FrameNumber)
    Print "seconds     " + Format(SecondsOf(c), "0.000000")
  End If
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As InvalidArgumentException
  Fail(e.Message, 2)
End Try

Function SecondsOf(c As QTTimeCodeKRZ) As Double
  Return Double(c.FrameNumber) * c.FrameDuration / c.TimeScale
End Function

' 107892 is a frame, 3600.5 and 3600s are seconds, 01:00:00;00 is a time code.
Function Converted(text As String, rate As FrameRate, t As QTTrackKRZ) As QTTimeCodeKRZ
  Dim c As New QTTimeCodeKRZ
  c.TimeScale = rate.TimeScale
  c.FrameDuration = rate.FrameDuration
  c.NumberOfFrames = rate.Frames
  c.DropFrames = rate.Drops
  c.Use24Hours = Not CommandLine.Has("no-wrap")
  c.IsNeg = Left(text, 1) = "-"
  If Left(text, 3) = "tc:" Then text = Mid(text, 4)
  Dim frames As New RegEx("^-?\d+$")
  Dim seconds As New RegEx("^(-?(?:\d+(?:\.\d*)?|\.\d+))s?$")
  If Not (frames.Search(text) Is Nil) Then
    c.FrameNumber = FrameIn(Val(text), text)
    t.FrameNumberToTimeCode(c)
  ElseIf Not (seconds.Search(text) Is Nil) Then
    Dim number As Double = Val(seconds.Search(text).SubExpression(1)) * rate.TimeScale / rate.FrameDuration
    ' A time that was printed with a few digits may lie a little before its frame.
    If Abs(number - Round(number)) < 0.001 Then number = Round(number)
    c.FrameNumber = FrameIn(Floor(number), text)
    t.FrameNumberToTimeCode(c)
  Else
    c.Counter = ParseTimeCode(text, c.Flags, rate.Frames)
    t.TimeCodeToFrameNumber(c)
  End If
  Return c
End Function

Function FrameIn(number As Double, text As String) As Integer
  If number > 2147483647 Or number < -2147483648.0 Then Raise New UsageError(text + " lies beyond the frames that can be counted")
  Return Integer(number)
End Function

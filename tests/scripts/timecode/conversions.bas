' Time codes and frame numbers are converted by a track, which need not be the one that they come from.
Dim m As Movie = OpenMovie(TestMovie("timecode"))
Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(2)
Dim first As QTTimeCodeKRZ = t.TimeCodeAtTime(0)
Print first.FrameNumber, t.TimeCodeToString(first), first.Hours, "[" + first.SourceName + "]"   ' expect: 107892 01:00:00;00 1 []
Print t.TimeCodeToString(t.TimeCodeAtTime(300299))               ' expect: 01:00:09;29

Sub Convert(t As QTTrackKRZ, flags As Integer, frames As Integer, frame As Integer)
  Dim c As New QTTimeCodeKRZ
  c.Flags = flags : c.NumberOfFrames = frames : c.FrameNumber = frame
  t.FrameNumberToTimeCode(c)
  Dim code As Integer = t.Lasterror
  Dim text As String = t.TimeCodeToString(c)
  c.FrameNumber = 0
  t.TimeCodeToFrameNumber(c)
  Print text, c.FrameNumber, code, t.Lasterror
End Sub
Convert(t, 1, 30, 17982)       ' expect: 00:10:00;00 17982 0 -1
Convert(t, 1, 60, 3600)        ' expect: 00:01:00;04 3600 0 -1
Convert(t, 3, 30, 2589408)     ' expect: 00:00:00;00 0 0 -1
Convert(t, 0, 25, 2160000)     ' expect: 24:00:00:00 2160000 0 -1
Convert(t, 4, 24, -25)         ' expect: -00:00:01:01 -25 0 -1
Convert(t, 0, 24, -1)          ' expect: 23:59:59:23 2073599 0 -1
Convert(t, 8, 0, -100)         ' expect: -100 -100 0 -1
Convert(t, 15, 30, 42)         ' expect: 42 42 0 -1
' Nothing is divided by zero: the record and the number stay.
Convert(t, 0, 0, 5)            ' expect: 00:00:00:00 0 -50 -1

' What is Nil, and a track that is none, are left alone.
t.FrameNumberToTimeCode(Nil)
Print t.Lasterror, "[" + t.TimeCodeToString(Nil) + "]"           ' expect: -1 []
Dim none As New QTTrackKRZ
none.FrameNumberToTimeCode(first)
Print none.Lasterror, first.FrameNumber, none.CurrentTimeCode Is Nil   ' expect: -1 107892 True
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
video.FrameNumberToTimeCode(first)
Print video.Lasterror                                            ' expect: -2147450878

' What people write is read strictly, and found in the movie.
Dim c As New QTTimeCodeKRZ
c.Counter = ParseTimeCode("10:20:30;02", 3, 30)
Print c.Hours, c.Minutes, c.Seconds, c.Frames                    ' expect: 10 20 30 2
Print TimeOfTimeCode(t.TrackHandle, "01:00:00;00"), TimeOfTimeCode(t.TrackHandle, "01:00:05;00")   ' expect: 0 3003
Print TrackMediaTime(t.TrackHandle, 3003), TrackMediaTime(t.TrackHandle, 7000)   ' expect: 150150 -1
For Each text As String In Array("01:01:00;00", "02:00:00;00", "noon")
  Try
    Print TimeOfTimeCode(t.TrackHandle, text)
  Catch e As InvalidArgumentException
    Print e.ErrorNumber, e.Message
  Catch e As IOException
    Print e.ErrorNumber, e.Message
  End Try
Next
' expect: -50 "01:01:00;00" is no time code: drop-frame counting leaves out the frames 00 to 01 of that minute, which begins with 01:01:00;02
' expect: -2031 the timecode track never shows 02:00:00;00
' expect: -50 "noon" is no time code: write hours, minutes, seconds and frames, as 01:00:00:00
Print Trim(TimeCodeFaults(9, 25, 1, 25)), TimeCodeFaults(3, 30000, 1001, 30) = ""   ' expect: the flags counter and drop-frame exclude each other True

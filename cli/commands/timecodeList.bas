' krz timecode list: the time code of every sample and edit.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"
#Include "timecodes.bas"

' Part of what a track shows that counts on from one sample.
Class ShownPart
  Start As Integer        ' movie units
  Duration As Integer
  First As QTTimeCodeKRZ  ' Nil where nothing is shown
  Last As QTTimeCodeKRZ
End Class

Try
  Dim m As Movie = OpenMovie(Args(0))
  If Not m.HasTimeCodeTrackKRZ Then Fail(Args(0) + " has no timecode track; krz timecode add makes one", 1)
  Dim selector As String = "tmcd"
  If CommandLine.Has("track") Then selector = CommandLine.Value("track")
  Dim documents As New JSONItem("[]")
  For Each t As QTTrackKRZ In SelectTracks(m, selector)
    If t.MediaType <> "tmcd" Then Raise New UsageError("track " + Str(t.TrackID) + " (" + t.MediaType + ") is no timecode track")
    If CommandLine.Has("json") Then
      documents.Append TrackDocument(m, t)
    Else
      ListSamples(t)
      ListEdits(m, t)
    End If
  Next
  If CommandLine.Has("json") Then Print documents.ToString(True)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

' Takes the sample at a media time; moves the time behind it. False behind the last.
Function NextSample(t As QTTrackKRZ, ByRef time As Integer, ByRef start As Integer, ByRef duration As Integer, ByRef description As Integer, ByRef c As QTTimeCodeKRZ) As Boolean
  Dim data As MemoryBlock, record As MemoryBlock, count As Integer, flags As Integer
  start = time
  If Not t.GetMediaSample(data, start, duration, record, description, 1, count, flags) Then Return False
  c = t.TimeCodeAtTime(start)
  If c Is Nil Then Fail(OfFile(Args(0), "track " + Str(t.TrackID) + ", the sample at " + Str(start) + ": " + MovieFailure), 3)
  If start + duration <= time Then Return False
  time = start + duration
  Return True
End Function

Sub ListSamples(t As QTTrackKRZ)
  Print "track " + Str(t.TrackID) + ": " + Counted(t.MediaSampleCount, "sample") + ", " + Str(MediaTimeScale(t.TrackHandle)) + " units a second"
  Print "   #        time    duration       frame  time code       description"
  Dim time As Integer, start As Integer, duration As Integer, description As Integer, number As Integer, c As QTTimeCodeKRZ
  While NextSample(t, time, start, duration, description, c)
    number = number + 1
    Print PadLeft(Str(number), 4) + PadLeft(Str(start), 12) + PadLeft(Str(duration), 12) + PadLeft(Str(c.FrameNumber), 12) + "  " + PadRight(t.TimeCodeToString(c), 16) + Str(description) + ", " + RateText(c) + ", " + FlagText(c)
    For Each fault As String In FaultsOf(c)
      Print "      not legal: " + fault
    Next
  Wend
End Sub

' What a track shows, edit by edit, and in an edit sample by sample.
Function ShownParts(t As QTTrackKRZ) As ShownPart()
  Dim parts() As ShownPart
  Dim start As Integer, duration As Integer, mediaStart As Int64, rate As Double
  For i As Integer = 1 To TrackEditCount(t.TrackHandle)
    If Not TrackEdit(t.TrackHandle, i, start, duration, mediaStart, rate) Then Exit For
    If duration = 0 Then Continue
    Dim time As Integer = start
    Dim finish As Integer = start + duration
    While time < finish
      Dim part As New ShownPart
      part.Start = time
      part.Duration = finish - time
      If mediaStart >= 0 Then
        part.First = t.TimeCodeAtTime(TrackMediaTime(t.TrackHandle, time))
        Dim behind As Integer = NextBreak(t, time, finish)
        part.Duration = behind - time
        part.Last = t.TimeCodeAtTime(TrackMediaTime(t.TrackHandle, behind - 1))
      End If
      parts.Append part
      time = time + part.Duration
    Wend
  Next
  Return parts
End Function

' When the next sample is shown, or the end of the edit.
Function NextBreak(t As QTTrackKRZ, time As Integer, finish As Integer) As Integer
  Dim behind As Integer = time
  Dim duration As Integer
  Dim found As Boolean = t.NextInterestingTimeKRZ(behind, duration, 1.0)
  If time = 0 And found And behind = 0 And duration > 0 Then behind = duration
  If Not found Or behind <= time Or behind > finish Then Return finish
  Return behind
End Function

Sub ListEdits(m As Movie, t As QTTrackKRZ)
  Print "        from          to  time code"
  For Each part As ShownPart In ShownParts(t)
    Dim line As String = PadLeft(ClockOf(part.Start, m), 12) + PadLeft(ClockOf(part.Start + part.Duration, m), 12) + "  "
    If part.First Is Nil Or part.Last Is Nil Then
      Print line + "none"
    Else
      Print line + t.TimeCodeToString(part.First) + " to " + t.TimeCodeToString(part.Last)
    End If
  Next
End Sub

Function TrackDocument(m As Movie, t As QTTrackKRZ) As JSONItem
  Dim document As New JSONItem
  document.Value("track") = t.TrackID
  document.Value("timeScale") = m.TimeScale
  document.Value("mediaTimeScale") = MediaTimeScale(t.TrackHandle)
  Dim samples As New JSONItem("[]")
  Dim time As Integer, start As Integer, duration As Integer, description As Integer, c As QTTimeCodeKRZ
  While NextSample(t, time, start, duration, description, c)
    Dim sample As JSONItem = TimeCodeDocument(c, t)
    sample.Value("time") = start
    sample.Value("duration") = duration
    sample.Value("description") = description
    samples.Append sample
  Wend
  document.Value("samples") = samples
  Dim edits As New JSONItem("[]")
  For Each part As ShownPart In ShownParts(t)
    Dim edit As New JSONItem
    edit.Value("start") = part.Start
    edit.Value("duration") = part.Duration
    edit.Value("first") = Nil
    edit.Value("last") = Nil
    If Not (part.First Is Nil Or part.Last Is Nil) Then
      edit.Value("first") = t.TimeCodeToString(part.First)
      edit.Value("firstFrame") = part.First.FrameNumber
      edit.Value("last") = t.TimeCodeToString(part.Last)
      edit.Value("lastFrame") = part.Last.FrameNumber
    End If
    edits.Append edit
  Next
  document.Value("edits") = edits
  Return document
End Function

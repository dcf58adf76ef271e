' Times as people write them, and as they are shown.
'
'   12.5   01:02:03.500   1500u (movie units)   1500/600   frame:240 (of the first picture track)
'   tc:01:00:00;00 (of the first timecode track)   end   end-2.0

' In movie units. Raises UsageError.
Function ParseTime(text As String, m As Movie) As Integer
  Dim units As Double
  If text = "end" Then Return m.Duration
  If Left(text, 4) = "end-" Then
    units = m.Duration - ParseTime(Mid(text, 5), m)
  ElseIf Left(text, 6) = "frame:" Then
    units = TimeOfFrame(Mid(text, 7), m)
  ElseIf Left(text, 3) = "tc:" Then
    units = TimeOfLabel(Mid(text, 4), m)
  ElseIf Right(text, 1) = "u" And IsNumber(Left(text, Len(text) - 1)) Then
    units = Val(text)
  ElseIf CountFields(text, "/") = 2 And IsNumber(NthField(text, "/", 1)) And Val(NthField(text, "/", 2)) > 0 Then
    units = Val(NthField(text, "/", 1)) / Val(NthField(text, "/", 2)) * m.TimeScale
  ElseIf InStr(text, ":") > 0 Then
    units = SecondsOfClock(text) * m.TimeScale
  ElseIf IsNumber(text) Then
    units = Val(text) * m.TimeScale
  Else
    Raise New UsageError("""" + text + """ is not a time; a time is 12.5, 01:02:03.5, 1500u, 1500/600, frame:240, tc:01:00:00:00, end or end-2.0")
  End If
  If units < 0 Or Round(units) > 2147483647 Then Raise New UsageError(text + " lies outside of any movie")
  Return Integer(Round(units))
End Function

Function IsNumber(text As String) As Boolean
  Static digits As RegEx = New RegEx("^\d+(\.\d*)?$|^\.\d+$")
  Return Not (digits.Search(text) Is Nil)
End Function

Function SecondsOfClock(text As String) As Double
  Dim total As Double
  For Each part As String In Split(text, ":")
    If Not IsNumber(part) Then Raise New UsageError("""" + text + """ is not a time; write hours, minutes and seconds as 01:02:03.500")
    total = total * 60 + Val(part)
  Next
  Return total
End Function

' The movie time at which a picture appears, the first being picture 0.
Function TimeOfFrame(text As String, m As Movie) As Double
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  If t Is Nil Or Not IsNumber(text) Then Raise New UsageError("frame:" + text + " needs a movie with pictures, and the number of one, from 0")
  Dim time As Integer, duration As Integer
  Dim left As Integer = Integer(Val(text))
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    If left = 0 Then Return time
    left = left - 1
    time = time + duration
  Wend
  Raise New UsageError("the movie has no picture number " + text)
End Function

' The movie time at which the first timecode track shows a time code.
Function TimeOfLabel(text As String, m As Movie) As Double
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If t.MediaType <> "tmcd" Then Continue
    Try
      Return TimeOfTimeCode(t.TrackHandle, text)
    Catch e As InvalidArgumentException
      Raise New UsageError(e.Message)
    Catch e As IOException
      If e.ErrorNumber <> -2031 Then Raise e
      Raise New UsageError(e.Message + "; krz timecode list says what it shows")
    End Try
  Next
  Raise New UsageError("tc:" + text + " needs a movie with a timecode track; krz timecode add makes one")
End Function

' Two times of one range: "10-20", "00:10-00:20", "10-end", "end-5.0-end".
Sub ParseRange(text As String, m As Movie, ByRef start As Integer, ByRef finish As Integer)
  For i As Integer = 2 To Len(text) - 1
    If Mid(text, i, 1) <> "-" Or Lowercase(Left(text, i)) = "end-" Or Mid(text, i - 1, 1) = ":" Then Continue
    start = ParseTime(Left(text, i - 1), m)
    finish = ParseTime(Mid(text, i + 1), m)
    If finish <= start Then Raise New UsageError(text + " ends before it begins")
    Return
  Next
  Raise New UsageError("""" + text + """ is not a range; a range is two times with a dash between them, such as 10-20.5")
End Sub

' "0:01:02.500"
Function ClockOf(time As Int64, m As Movie) As String
  Return ClockText(time, m.TimeScale)
End Function

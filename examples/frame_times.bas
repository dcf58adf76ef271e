' Writes the time at which each picture of a movie appears, in milliseconds, one a line, in the form that other tools
' read as "timestamp format v2":
'   krz run examples/frame_times.bas MOVIE [TRACK-ID] > times.txt
'
' With --summary behind it, says what stands out instead: the longest and shortest picture, and every one that stands
' longer than three others.
Const kHeading = "# timestamp format v2"

Dim path As String, wanted As Integer, summary As Boolean
For Each argument As String In Args
  If argument = "--summary" Then
    summary = True
  ElseIf path = "" Then
    path = argument
  ElseIf Val(argument) > 0 Then
    wanted = Integer(Val(argument))
  Else
    StdErr.WriteLine("""" + argument + """ is not the ID of a track")
    Quit(2)
  End If
Next
If path = "" Then
  StdErr.WriteLine("usage: krz run frame_times.bas MOVIE [TRACK-ID] [--summary]")
  Quit(2)
End If

Dim m As Movie = OpenMovie(path)
Dim t As QTTrackKRZ = PictureTrack(m, wanted)
If t Is Nil Then
  StdErr.WriteLine(path + ": there is no such track with pictures")
  Quit(1)
End If
If summary Then Summarise(t) Else WriteTimes(t)

Function PictureTrack(m As Movie, id As Integer) As QTTrackKRZ
  If id = 0 Then Return m.GetVideoTrackKRZ(1)
  Dim found As QTTrackKRZ = m.GetTrackIDKRZ(id)
  If found Is Nil Then Return Nil
  If found.MediaType <> "vide" Then Return Nil
  Return found
End Function

Sub WriteTimes(t As QTTrackKRZ)
  Print kHeading
  Dim time As Integer, duration As Integer
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    Print Format(time * 1000.0 / m.TimeScale, "0.000000")
    time = time + duration
  Wend
End Sub

Sub Summarise(t As QTTrackKRZ)
  Dim times() As Integer, durations() As Integer
  Dim time As Integer, duration As Integer
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    times.Append time
    durations.Append duration
    time = time + duration
  Wend
  If times.Count = 0 Then
    Print "no pictures are shown"
    Return
  End If
  Dim least As Integer, greatest As Integer
  Dim total As Int64
  For i As Integer = 0 To durations.LastIndex
    If durations(i) < durations(least) Then least = i
    If durations(i) > durations(greatest) Then greatest = i
    total = total + durations(i)
  Next
  Print times.Count, "pictures in", Milliseconds(Integer(total)), "ms"
  Print "shortest", Milliseconds(durations(least)), "ms, at", Milliseconds(times(least)), "ms"
  Print "longest", Milliseconds(durations(greatest)), "ms, at", Milliseconds(times(greatest)), "ms"
  Dim average As Double = total / times.Count
  Dim long As Integer
  For i As Integer = 0 To durations.LastIndex
    If durations(i) > 3 * average Then
      long = long + 1
      If long <= 10 Then Print "stands for", Milliseconds(durations(i)), "ms at", Milliseconds(times(i)), "ms"
    End If
  Next
  If long > 10 Then Print "and", long - 10, "more"
End Sub

Function Milliseconds(time As Integer) As String
  Return Format(time * 1000.0 / m.TimeScale, "0.###")
End Function

' Tells whether the pictures of a movie come at a constant rate: krz run examples/frame_rate_report.bas *.mov
'
' Every picture's time on screen is counted. A steady movie has one line, a movie from a telephone or a screen recorder
' often dozens; the report then says which picture rates an editing program would be content with.
Const kMostLines = 8

If Args.Count = 0 Then
  StdErr.WriteLine("usage: krz run frame_rate_report.bas MOVIE...")
  Quit(2)
End If
For Each path As String In Args
  Dim m As Movie = OpenMovie(path)
  Dim i As Integer = 1
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(i)
  If t Is Nil Then Print path + ": no pictures"
  While Not (t Is Nil)
    Report(path, m, t)
    i = i + 1
    t = m.GetVideoTrackKRZ(i)
  Wend
Next

Sub Report(path As String, m As Movie, t As QTTrackKRZ)
  Dim counts As New Dictionary
  Dim pictures As Integer
  Dim shown As Int64
  Dim time As Integer, duration As Integer
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0 And duration > 0
    counts.Value(duration) = counts.Lookup(duration, 0) + 1
    pictures = pictures + 1
    shown = shown + duration
    time = time + duration
  Wend
  Print path + ", track", t.TrackID
  If pictures = 0 Then
    Print "  no pictures are shown"
    Return
  End If
  Dim average As Double = pictures * CDbl(Str(m.TimeScale)) / shown
  Print "  " + Str(pictures), "pictures,", Format(average, "0.###"), "a second on average,", StandardRate(average)
  ShowDurations(counts, pictures, m.TimeScale)
  If counts.Count = 1 Then
    Print "  constant"
  ElseIf Jitters(counts) Then
    Print "  constant, as far as units of 1/" + Str(m.TimeScale) + " second can say"
  Else
    Print "  variable"
  End If
End Sub

' The commonest durations, one a line.
Sub ShowDurations(counts As Dictionary, pictures As Integer, timeScale As Integer)
  Dim durations() As Integer
  For Each key As Variant In counts.Keys
    durations.Append Integer(key)
  Next
  SortByCount(durations, counts)
  For i As Integer = 0 To Min(durations.LastIndex, kMostLines - 1)
    Dim count As Integer = Integer(counts.Value(durations(i)))
    Dim share As String = Format(count / pictures, "0.0%")
    Print "  " + Right("         " + Str(count), 9), "x", durations(i), "units,", Format(timeScale / durations(i), "0.###"), "a second,", share
  Next
  If durations.Count > kMostLines Then Print "  and", durations.Count - kMostLines, "other durations"
End Sub

' The commonest first; equal ones by duration. Small lists: insertion is enough.
Sub SortByCount(durations() As Integer, counts As Dictionary)
  For i As Integer = 1 To durations.LastIndex
    Dim moved As Integer = durations(i)
    Dim place As Integer = i
    While place > 0 And ComesBefore(moved, durations(Max(place - 1, 0)), counts)
      durations(place) = durations(place - 1)
      place = place - 1
    Wend
    durations(place) = moved
  Next
End Sub

Function ComesBefore(a As Integer, b As Integer, counts As Dictionary) As Boolean
  Dim countOfA As Integer = Integer(counts.Value(a))
  Dim countOfB As Integer = Integer(counts.Value(b))
  If countOfA <> countOfB Then Return countOfA > countOfB
  Return a < b
End Function

' Two neighbouring durations that differ by one unit are one rate, rounded.
Function Jitters(counts As Dictionary) As Boolean
  Dim least As Integer = 2147483647, greatest As Integer
  For Each key As Variant In counts.Keys
    least = Min(least, Integer(key))
    greatest = Max(greatest, Integer(key))
  Next
  Return greatest - least <= 1
End Function

' The standard rate within what rounding can explain.
Function StandardRate(rate As Double) As String
  Dim names() As String = Array("23.976", "24", "25", "29.97", "30", "48", "50", "59.94", "60", "120")
  For Each name As String In names
    If Abs(Val(name) - rate) < rate / 1500 Then Return "which is standard " + name
  Next
  Return "no standard rate"
End Function

' The upper part of a map: time from left to right, chapters, and a lane for each track with its edits.

Class Timeline
  Height As Integer
  Private Const kLeft = 272, kRight = 1168, kLane = 46, kAxis = 30, kBand = 34
  Private m As Movie
  Private tracks() As MapTrack
  Private lists() As ChapterList
  Private span As Double      ' movie units from edge to edge
  Private c As Canvas

  Sub Constructor(m As Movie, tracks() As MapTrack, lists() As ChapterList)
    Self.m = m
    Self.tracks = tracks
    Self.lists = lists
    span = Max(1, m.Duration)
    For Each one As MapTrack In tracks
      span = Max(span, one.Track.Duration)
    Next
    Height = kAxis + tracks.Count * kLane + 18
    If HasChapters Then Height = Height + kBand
  End Sub

  Sub Draw(c As Canvas, top As Integer)
    Self.c = c
    Dim bottom As Integer = top + Height - 18
    DrawAxis(top, bottom)
    Dim y As Integer = top + kAxis
    If HasChapters Then
      DrawChapters(lists(0), y, bottom)
      y = y + kBand
    End If
    For Each one As MapTrack In tracks
      DrawLane(one, y)
      y = y + kLane
    Next
  End Sub

  Private Function HasChapters() As Boolean
    If lists.Count = 0 Then Return False
    Return lists(0).Items.Count > 0
  End Function

  Private Function Across(time As Double) As Double
    Return kLeft + (kRight - kLeft) * Max(0, Min(time / span, 1))
  End Function

  ' A tick about every hundred units, at times that people count in.
  Private Sub DrawAxis(top As Integer, bottom As Integer)
    Dim seconds As Double = span / m.TimeScale
    Dim tick As Double = Pow(10, Floor(Log(seconds / 9) / Log(10)))
    For Each nice As Double In Array(0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 120.0, 300.0, 600.0, 900.0, 1800.0, 3600.0, 7200.0, 14400.0, 43200.0, 86400.0)
      If nice * 9 < seconds Then Continue
      tick = nice
      Exit For
    Next
    c.Line(kLeft, top + kAxis, kRight, top + kAxis, &c9AA2AC)
    For i As Integer = 0 To 40
      Dim at As Double = i * tick
      If at > seconds * 1.0001 Then Exit For
      Dim x As Double = Across(at * m.TimeScale)
      c.Line(x, top + kAxis - 5, x, top + kAxis, &c9AA2AC)
      c.Line(x, top + kAxis, x, bottom, &cE9ECEF)
      Dim anchor As String = "middle"
      If x > kRight - 18 Then anchor = "end"
      c.Text(TickText(at, tick), x, top + kAxis - 10, 11, &c5B636D, False, anchor)
    Next
  End Sub

  Private Function TickText(seconds As Double, tick As Double) As String
    If tick < 1 Then Return Format(seconds, "0.0##") + " s"
    Dim whole As Int64 = Int64(Round(seconds))
    Dim text As String = Right("0" + Str(whole Mod 60), 2)
    If whole < 3600 Then Return Str(whole \ 60) + ":" + text
    Return Str(whole \ 3600) + ":" + Right("0" + Str(whole \ 60 Mod 60), 2) + ":" + text
  End Function

  ' A band for each chapter, with a line down through the lanes; those too narrow to see share one.
  Private Sub DrawChapters(list As ChapterList, y As Integer, bottom As Integer)
    c.Text("Chapters", 32, y + 21, 13, &c1F2328, True)
    Dim count As String = Counted(list.Items.Count, "chapter")
    If list.Track Is Nil Then count = "short list"
    c.Text(count, 110, y + 21, 11, &c5B636D)
    Dim drawn As Double = kLeft - 10
    For i As Integer = 0 To list.Items.LastIndex
      Dim x As Double = Across(list.Items(i).Start)
      If x - drawn < 2 And i > 0 Then Continue
      drawn = x
      Dim finish As Double = Across(Max(list.EndOf(i), list.Items(i).Start))
      Dim fill As Color = &cF3DFC1
      If i Mod 2 = 1 Then fill = &cEACB9D
      Dim title As String = ReplaceAll(ReplaceAll(list.Items(i).Title, Chr(13), " "), Chr(10), " ")
      c.Box(x, y + 6, Max(finish - x - 1, 1), 22, fill, Str(i + 1) + ". " + Left(title, 200) + "  " + ClockText(list.Items(i).Start, m.TimeScale))
      If finish - x > 24 Then c.Text(c.Fitted(title, 11, finish - x - 14), x + 6, y + 21, 11, &c5A3A10)
      If i > 0 Then c.Line(x, y + 28, x, bottom, &cE3C79B)
    Next
  End Sub

  Private Sub DrawLane(one As MapTrack, y As Integer)
    c.Text(c.Fitted(one.Name, 13, 200), 32, y + 20, 13, &c1F2328, True)
    c.Text(c.Fitted(one.Detail, 10, kLeft - 46), 32, y + 35, 10, &c5B636D)
    c.Box(20, y + 8, 4, 30, one.Tint)
    Dim start As Integer, duration As Integer, mediaStart As Int64, rate As Double
    Dim narrowFrom As Double = -1, narrowTo As Double
    Dim narrow As Integer
    For i As Integer = 1 To TrackEditCount(one.Track.TrackHandle)
      If Not TrackEdit(one.Track.TrackHandle, i, start, duration, mediaStart, rate) Then Exit For
      Dim x As Double = Across(start)
      Dim finish As Double = Across(Double(start) + duration)
      If finish - x < 2 Then
        If narrowFrom < 0 Then narrowFrom = x
        narrowTo = finish
        narrow = narrow + 1
        Continue
      End If
      DrawNarrow(one, y, narrowFrom, narrowTo, narrow)
      DrawEdit(one, y, x, finish, i, start, duration, mediaStart, rate)
      narrowFrom = -1
      narrow = 0
    Next
    DrawNarrow(one, y, narrowFrom, narrowTo, narrow)
  End Sub

  ' Edits that are too short to be seen one by one.
  Private Sub DrawNarrow(one As MapTrack, y As Integer, x As Double, finish As Double, count As Integer)
    If count = 0 Then Return
    c.Box(x, y + 10, Max(finish - x - 1, 2), 26, Mixed(one.Tint, &cFFFFFF, 0.8), Counted(count, "edit"))
    c.Text(c.Fitted(Counted(count, "short edit"), 10, finish - x - 12), x + 6, y + 26, 10, one.Ink)
  End Sub

  Private Sub DrawEdit(one As MapTrack, y As Integer, x As Double, finish As Double, number As Integer, start As Integer, duration As Integer, mediaStart As Int64, rate As Double)
    Dim width As Double = finish - x - 1
    Dim hint As String = "edit " + Str(number) + ": " + ClockText(start, m.TimeScale) + " to " + ClockText(Int64(start) + duration, m.TimeScale)
    If mediaStart < 0 Then
      c.Dashes(x + 2, finish - 2, y + 23, &cA9B1BA)
      If width > 40 Then c.Text("empty", x + width / 2, y + 18, 10, &c7C8590, False, "middle")
      Return
    End If
    Dim scale As Integer = MediaTimeScale(one.Track.TrackHandle)
    Dim from As String
    If scale > 0 Then from = ClockText(mediaStart, scale)
    hint = hint + ", media from " + from
    Dim label As String
    If rate = 0 Then label = "held"
    If rate <> 0 And rate <> 1 Then label = "× " + Format(rate, "0.###")
    If label <> "" Then hint = hint + ", " + label
    c.Box(x, y + 10, width, 26, one.Tint, hint)
    ' Another speed is seen without reading: a second colour along the lower edge.
    If label <> "" Then c.Box(x, y + 31, width, 5, &cD0433B)
    Dim text As String
    If mediaStart > 0 And scale > 0 Then text = "from " + ShortClock(mediaStart, scale)
    If one.Track.MediaType = "tmcd" Then
      text = TimeCodeAt(one.Track, start)
      Dim last As String = TimeCodeAt(one.Track, start + duration - 1)
      If last <> "" And width > c.Wide(text + last, 10) + 40 Then c.Text(last, x + width - 6, y + 26, 10, one.Ink, False, "end")
    End If
    If label <> "" And text <> "" Then text = label + "  " + text
    If text = "" Then text = label
    If width > 40 Then c.Text(c.Fitted(text, 10, width - 12), x + 6, y + 26, 10, one.Ink)
  End Sub

  ' What a timecode track shows at a time of the movie; "" where it shows nothing.
  Private Function TimeCodeAt(t As QTTrackKRZ, time As Integer) As String
    Dim mediaTime As Integer = TrackMediaTime(t.TrackHandle, time)
    If mediaTime < 0 Then Return ""
    Dim shown As QTTimeCodeKRZ = t.TimeCodeAtTime(mediaTime)
    If shown Is Nil Then Return ""
    Return t.TimeCodeToString(shown)
  End Function

  ' "0:03", "1:02:03.5": no hours and no thousandths where there are none.
  Private Function ShortClock(time As Int64, scale As Integer) As String
    Dim text As String = ClockText(time, scale)
    If Left(text, 2) = "0:" Then text = Mid(text, 3)
    If Left(text, 1) = "0" Then text = Mid(text, 2)
    While Right(text, 1) = "0" And InStr(text, ".") > 0
      text = Left(text, Len(text) - 1)
    Wend
    If Right(text, 1) = "." Then text = Left(text, Len(text) - 1)
    Return text
  End Function
End Class

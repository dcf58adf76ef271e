' The levels of tracks over time, and a picture of them.

' The levels of one track between the times of the command line.
Class TrackLevels
  ID As Integer
  Channels As Integer
  Count As Integer      ' intervals
  Every As Integer      ' movie units
  IsDecoded As Boolean
  Private start As Integer
  Private values As MemoryBlock

  ' Raises UsageError.
  Sub Constructor(t As QTTrackKRZ, m As Movie)
    ID = t.TrackID
    IsDecoded = CanMeasureSound(t.TrackHandle)
    Dim finish As Integer = t.Duration
    If CommandLine.Has("from") Then start = ParseTime(CommandLine.Value("from"), m)
    If CommandLine.Has("to") Then finish = Min(finish, ParseTime(CommandLine.Value("to"), m))
    If finish < start Then Raise New UsageError("the track ends, or --to lies, before --from")
    If CommandLine.Has("every") Then
      Every = ParseTime(CommandLine.Value("every"), m)
      If Every < 1 Then Raise New UsageError("--every " + CommandLine.Value("every") + " is shorter than a unit of the movie's time scale")
    ElseIf CommandLine.Has("output") Then
      ' About a column of the picture.
      Every = Max((finish - start) \ 1000, 1)
    Else
      Every = m.TimeScale
    End If
    values = SoundLevels(t.TrackHandle, start, finish, Every, Channels)
    If Channels > 0 Then Count = values.Size \ (Channels * 8)
  End Sub

  Function StartOf(place As Integer) As Integer
    Return start + place * Every
  End Function

  ' 1 is full scale. Intervals and channels count from 0.
  Function Peak(place As Integer, channel As Integer) As Double
    Return values.SingleValue((place * Channels + channel) * 8)
  End Function

  Function Mean(place As Integer, channel As Integer) As Double
    Return values.SingleValue((place * Channels + channel) * 8 + 4)
  End Function
End Class

Const kPictureWidth = 1000
Const kLaneHeight = 120
Const kMargin = 60

' A lane for each channel of each track: the peaks in grey, the mean in colour, from -60 dB up.
Sub Draw(all() As TrackLevels, m As Movie, path As String)
  If GetFolderItem(path).NativePath = GetFolderItem(Args(0)).NativePath Then Raise New UsageError(path + " is the movie itself; choose another name")
  Dim lanes As Integer
  For Each levels As TrackLevels In all
    lanes = lanes + levels.Channels
  Next
  Dim height As Integer = lanes * (kLaneHeight + 20) + 40
  Dim file As TextOutputStream = TextOutputStream.Create(path, CommandLine.Has("force"))
  file.WriteLine("<svg xmlns=""http://www.w3.org/2000/svg"" width=""" + Str(kPictureWidth + 2 * kMargin) + """ height=""" + Str(height) + """ font-family=""sans-serif"" font-size=""12"">")
  file.WriteLine("<rect width=""100%"" height=""100%"" fill=""white""/>")
  Dim top As Integer = 20
  For Each levels As TrackLevels In all
    For channel As Integer = 0 To levels.Channels - 1
      DrawLane(file, levels, channel, m, top)
      top = top + kLaneHeight + 20
    Next
  Next
  file.WriteLine("</svg>")
  file.Close
  Say("wrote " + path)
End Sub

Sub DrawLane(file As TextOutputStream, levels As TrackLevels, channel As Integer, m As Movie, top As Integer)
  Dim bottom As Integer = top + kLaneHeight
  file.WriteLine("<g transform=""translate(" + Str(kMargin) + " 0)"">")
  file.WriteLine("<text x=""0"" y=""" + Str(top - 5) + """>track " + Str(levels.ID) + ", channel " + Str(channel + 1) + "</text>")
  For decibel As Integer = -60 To 0 Step 20
    Dim y As String = Format(HeightOf(decibel, bottom), "0.#")
    file.WriteLine("<line x1=""0"" x2=""" + Str(kPictureWidth) + """ y1=""" + y + """ y2=""" + y + """ stroke=""#ddd""/><text x=""-8"" y=""" + y + """ text-anchor=""end"" dominant-baseline=""middle"">" + Str(decibel) + "</text>")
  Next
  DrawLevels(file, levels, channel, bottom, True, "#bbb")
  DrawLevels(file, levels, channel, bottom, False, "#2a6")
  file.WriteLine("<text x=""0"" y=""" + Str(bottom + 12) + """ fill=""#666"">" + ClockOf(levels.StartOf(0), m) + "</text><text x=""" + Str(kPictureWidth) + """ y=""" + Str(bottom + 12) + """ fill=""#666"" text-anchor=""end"">" + ClockOf(levels.StartOf(levels.Count), m) + "</text>")
  file.WriteLine("</g>")
End Sub

' More intervals than columns are drawn by their loudest.
Sub DrawLevels(file As TextOutputStream, levels As TrackLevels, channel As Integer, bottom As Integer, peaks As Boolean, fill As String)
  Dim columns As Integer = Min(levels.Count, kPictureWidth)
  If columns = 0 Then Return
  file.Write("<path fill=""" + fill + """ d=""M0 " + Str(bottom))
  For column As Integer = 0 To columns - 1
    Dim first As Integer = Integer(Int64(column) * levels.Count \ columns)
    Dim last As Integer = Integer(Int64(column + 1) * levels.Count \ columns) - 1
    Dim loudest As Double
    For place As Integer = first To last
      If peaks Then loudest = Max(loudest, levels.Peak(place, channel)) Else loudest = Max(loudest, levels.Mean(place, channel))
    Next
    Dim left As String = Format(column * kPictureWidth / columns, "0.#")
    Dim right As String = Format((column + 1) * kPictureWidth / columns, "0.#")
    Dim y As String = Format(HeightOf(Decibels(loudest), bottom), "0.#")
    file.Write("L" + left + " " + y + "L" + right + " " + y)
  Next
  file.WriteLine("L" + Str(kPictureWidth) + " " + Str(bottom) + "Z""/>")
End Sub

Function HeightOf(decibel As Double, bottom As Integer) As Double
  Return bottom - Min(Max(decibel + 60, 0), 60) / 60 * kLaneHeight
End Function

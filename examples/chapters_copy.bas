' Copies the chapters of one movie to another: krz run examples/chapters_copy.bas FROM TO
If Args.Count <> 2 Then
  StdErr.WriteLine("usage: krz run chapters_copy.bas FROM TO")
  Quit(2)
End If
Dim source As Movie = OpenMovie(Args(0))
Dim target As Movie = OpenMovie(Args(1), True)
Dim from As QTChapterTrackKRZ = source.ChapterTrackKRZ
If from Is Nil Then
  StdErr.WriteLine(Args(0) + " has no chapters")
  Quit(1)
End If

' Times become those of the other movie; what lies behind its end is left out.
Dim chapters() As QTChapterDataKRZ
Dim time As Integer = from.GetFirstChapterTime
Dim first As Integer = Rescaled(time)
While time >= 0 And Rescaled(time) < target.Duration
  Dim following As Integer = from.GetNextChapterTime(time)
  Dim finish As Integer = target.Duration
  If following >= 0 Then finish = Min(finish, Rescaled(following))
  Dim chapter As New QTChapterDataKRZ
  chapter.Text = SampleText(from.TrackHandle, time)
  chapter.FrameDuration = finish - Rescaled(time)
  chapters.Append chapter
  time = following
Wend
If chapters.Count = 0 Then
  StdErr.WriteLine("no chapter of " + Args(0) + " lies inside of " + Args(1))
  Quit(1)
End If
While target.HasQTChapterTrackKRZ
  RemoveTrack(target.ChapterTrackKRZ.TrackHandle)
Wend
Dim t As QTChapterTrackKRZ = target.AddTextTrackKRZ(chapters, "vide", True)
If t Is Nil Then t = target.AddTextTrackKRZ(chapters, "soun", True)
t.TrackEnabled = False
If first > 0 Then t.TimeOffset = first
target.Save
Print t.ChapterCount, "chapters"

Function Rescaled(time As Int64) As Integer
  Return Integer((time * target.TimeScale + source.TimeScale \ 2) \ source.TimeScale)
End Function

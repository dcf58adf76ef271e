' Makes a chapter every so many minutes: krz run examples/chapters_every.bas MOVIE MINUTES
If Args.Count <> 2 Then
  StdErr.WriteLine("usage: krz run chapters_every.bas MOVIE MINUTES")
  Quit(2)
End If
Dim m As Movie = OpenMovie(Args(0), True)
Dim length As Integer = Integer(Round(Val(Args(1)) * 60 * m.TimeScale))
If length < 1 Then
  StdErr.WriteLine(Args(1) + " minutes are no length of a chapter")
  Quit(2)
End If
Dim chapters() As QTChapterDataKRZ
For start As Integer = 0 To m.Duration - 1 Step length
  Dim chapter As New QTChapterDataKRZ
  chapter.Text = "Chapter " + Str(chapters.Count + 1)
  chapter.FrameDuration = Min(length, m.Duration - start)
  chapters.Append chapter
Next
While m.HasQTChapterTrackKRZ
  RemoveTrack(m.ChapterTrackKRZ.TrackHandle)
Wend
Dim t As QTChapterTrackKRZ = m.AddTextTrackKRZ(chapters, "vide", True)
If t Is Nil Then t = m.AddTextTrackKRZ(chapters, "soun", True)
If t Is Nil Then
  StdErr.WriteLine("the movie has neither pictures nor sound")
  Quit(1)
End If
t.TrackEnabled = False
m.Save
Print t.ChapterCount, "chapters"

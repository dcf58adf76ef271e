' Gives a movie the chapters of a table: krz run examples/chapters_from_csv.bas MOVIE TABLE
'
' A line of the table is a time in seconds and a title, 90.5,Title, and perhaps a colour of the text: 90.5,Title,FF8000.
If Args.Count <> 2 Then
  StdErr.WriteLine("usage: krz run chapters_from_csv.bas MOVIE TABLE")
  Quit(2)
End If
Dim m As Movie = OpenMovie(Args(0), True)
Dim starts() As Integer
Dim chapters() As QTChapterDataKRZ
Dim table As TextInputStream = TextInputStream.Open(Args(1))
While Not table.EndOfFile
  Dim line As String = Trim(table.ReadLine)
  If line = "" Then Continue
  Dim chapter As New QTChapterDataKRZ
  chapter.Text = NthField(line, ",", 2)
  If NthField(line, ",", 3) <> "" Then
    chapter.HasTextColor = True
    Dim code As Integer = Integer(Val("&h" + NthField(line, ",", 3)))
    chapter.TextColor = RGB(code \ 65536, code \ 256 Mod 256, code Mod 256)
  End If
  starts.Append Integer(Round(Val(line) * m.TimeScale))
  chapters.Append chapter
Wend

' A chapter lasts until the next one begins, the last one until the movie ends.
For i As Integer = 0 To chapters.LastIndex
  Dim finish As Integer = m.Duration
  If i < chapters.LastIndex Then finish = starts(i + 1)
  If finish <= starts(i) Then
    StdErr.WriteLine("line " + Str(i + 1) + ": the chapter does not end behind its start")
    Quit(1)
  End If
  chapters(i).FrameDuration = finish - starts(i)
Next
If m.HasQTChapterTrackKRZ Then RemoveTrack(m.ChapterTrackKRZ.TrackHandle)
Dim t As QTChapterTrackKRZ = m.AddTextTrackKRZ(chapters, "vide", True)
If t Is Nil Then
  StdErr.WriteLine("the movie has no pictures that the chapters could belong to")
  Quit(1)
End If
t.TrackEnabled = False    ' players show the titles in a menu, not on the picture
If starts.Count > 0 Then t.TimeOffset = starts(0)
m.Save
Print t.ChapterCount, "chapters"

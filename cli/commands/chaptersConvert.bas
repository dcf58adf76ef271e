' krz chapters convert: makes the short list in user data from the chapter track, or the track from the list.
#Include "changes.bas"
#Include "chapters.bas"

Try
  Dim target As String = Lowercase(CommandLine.Value("to"))
  If target <> "short" And target <> "track" Then Raise New UsageError("say --to short for the list that some players read, or --to track for a chapter track")
  Dim change As New MovieChange(Args(0))
  If target = "short" Then MakeShortList(change.Target) Else MakeTrack(change.Target)
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub MakeShortList(m As Movie)
  Dim list As ChapterList = WantedList(m)
  Dim isMissing As Boolean = list Is Nil
  If Not isMissing Then isMissing = list.Track Is Nil
  If isMissing Then Fail("the movie has no chapter track", 1)
  WriteShortList(m, list.Items)
End Sub

Sub MakeTrack(m As Movie)
  Dim short As ChapterList = ShortList(m)
  If short.Items.Count = 0 Then Fail("the movie has no short chapter list", 1)
  For i As Integer = 0 To short.Items.LastIndex
    If short.Items(i).Start >= m.Duration Then Fail("chapter " + Str(i + 1) + " of the short list begins where the movie has ended", 1)
    If i > 0 Then
      If short.Items(i).Start <= short.Items(i - 1).Start Then Fail("chapter " + Str(i + 1) + " of the short list does not begin behind the one before it", 1)
    End If
  Next
  WriteChapters(m, short.Items, m.Duration, ChapterOwner(m))
End Sub

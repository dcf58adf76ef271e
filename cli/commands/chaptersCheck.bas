' krz chapters check: what players need of chapters, and whether it is there.
#Include "chapters.bas"

Dim problems As Integer
Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim lists() As ChapterList = ChapterLists(m)
  If lists.Count = 0 Then
    Problem("there are no chapters: no track refers to one, and there is no short list")
  ElseIf lists(0).Track Is Nil Then
    Problem("there is a short list only, which few players read; `krz chapters convert --to track` makes a track of it")
  Else
    For Each list As ChapterList In lists
      CheckList(list, m)
    Next
    CheckShortList(m, lists(0))
  End If
Catch e As IOException
  Fail(e.Message, 3)
End Try
If problems = 0 Then
  Say("the chapters are as players need them")
Else
  Quit(1)
End If

Sub Problem(text As String)
  problems = problems + 1
  Print text
End Sub

Sub CheckList(list As ChapterList, m As Movie)
  Dim place As String = "track " + Str(list.Track.TrackID) + ": "
  Dim enabled As Integer
  For Each owner As QTTrackKRZ In list.Owners
    If owner.TrackEnabled Then enabled = enabled + 1
    If owner.TrackID = list.Track.TrackID Then Problem(place + "names itself as its chapters")
  Next
  If enabled = 0 Then Problem(place + "no enabled track refers to it, and players do not look at disabled ones; `krz track set --enable`")
  If list.Track.TrackEnabled Then Problem(place + "is enabled, so that players draw its titles; `krz track set --disable`")
  If list.Track.HasChapterTrack Then Problem(place + "has chapters of its own, which leads in a circle")
  If list.Items.Count = 0 Then
    Problem(place + "is empty")
    Return
  End If
  If list.Items(0).Start > 0 Then Problem(place + "the first chapter begins at " + ChapterClock(list.Items(0).Start, m) + ", not at 0")
  If list.Finish > m.Duration Then Problem(place + "the last chapter ends behind the movie")
  For i As Integer = 0 To list.Items.LastIndex
    CheckTitle(place + "chapter " + Str(i + 1), list.Track, list.Items(i), m)
  Next
End Sub

Sub CheckTitle(place As String, t As QTTrackKRZ, item As Chapter, m As Movie)
  If Trim(item.Title) = "" Then
    Problem(place + " has no title")
  ElseIf item.Start >= m.Duration Then
    Problem(place + " begins where the movie has ended")
  ElseIf SampleEncoding(t.TrackHandle, item.Start) = "MacRoman" Then
    Problem(place + " is in an old 8-bit encoding, which players show wrong; `krz chapters export` and `import` put that right")
  End If
End Sub

Sub CheckShortList(m As Movie, list As ChapterList)
  Dim short As ChapterList = ShortList(m)
  If short.Items.Count = 0 Then Return
  If Not SaysTheSame(short, list, m) Then Problem("the short list in user data says something else than the chapter track; `krz chapters convert --to short` writes it anew")
End Sub

' krz chapters set: changes the title or the time of one chapter, or adds one behind the last.
#Include "changes.bas"
#Include "chapters.bas"

Try
  If Not CommandLine.Has("title") And Not CommandLine.Has("time") Then Raise New UsageError("say what to change: --title TEXT, --time TIME")
  If Not IsNumber(Args(1)) Then Raise New UsageError("""" + Args(1) + """ is no number of a chapter")
  Dim change As New MovieChange(Args(0))
  Dim m As Movie = change.Target
  Dim list As ChapterList = WantedList(m)
  If list Is Nil Then list = New ChapterList
  SetChapter(m, list, Integer(Val(Args(1))))
  Dim owner As QTTrackKRZ
  If list.Owners.Count > 0 Then owner = list.Owners(0) Else owner = ChapterOwner(m)
  WriteChapters(m, list.Items, Max(list.Finish, list.Items(list.Items.LastIndex).Start + 1), owner)
  WarnOfShortList(m)
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub SetChapter(m As Movie, list As ChapterList, number As Integer)
  Dim count As Integer = list.Items.Count
  If number < 1 Or number > count + 1 Then Raise New UsageError("there is no chapter " + Str(number) + "; the movie has " + Str(count) + ", and " + Str(count + 1) + " would add one")
  If number > count Then
    If Not CommandLine.Has("title") Or Not CommandLine.Has("time") Then Raise New UsageError("a new chapter needs --title and --time")
    list.Items.Append New Chapter(0, "")
    list.Finish = m.Duration
  End If
  Dim item As Chapter = list.Items(number - 1)
  If CommandLine.Has("title") Then item.Title = CommandLine.Value("title")
  If CommandLine.Has("time") Then item.Start = ParseTime(CommandLine.Value("time"), m)
  If Trim(item.Title) = "" Then Raise New UsageError("a chapter needs a title")
  If item.Start >= m.Duration Then Raise New UsageError("the movie ends at " + ChapterClock(m.Duration, m) + "; a chapter begins before that")
  If number > 1 Then
    If list.Items(number - 2).Start >= item.Start Then Raise New UsageError("chapter " + Str(number) + " must begin behind the one before it, which begins at " + ChapterClock(list.Items(number - 2).Start, m))
  End If
  If number < list.Items.Count Then
    If list.Items(number).Start <= item.Start Then Raise New UsageError("chapter " + Str(number) + " must begin before the next one, which begins at " + ChapterClock(list.Items(number).Start, m))
  End If
End Sub

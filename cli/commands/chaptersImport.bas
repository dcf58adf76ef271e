' krz chapters import: takes chapters from a file, or makes one every so often.
#Include "changes.bas"
#Include "chapterReader.bas"

Try
  If CommandLine.Has("every") = (Args.Count > 1) Then Raise New UsageError("name a file of chapters, - for standard input, or say --every 5m")
  Dim change As New MovieChange(Args(0))
  Dim m As Movie = change.Target
  Dim items() As Chapter
  Dim finish As Integer = m.Duration
  If CommandLine.Has("every") Then
    items = RegularChapters(m)
  Else
    Dim reader As New ChapterReader(Args(1), m)
    items = reader.Items
    finish = reader.Finish
  End If
  WriteChapters(m, items, finish, ChapterOwner(m))
  If Not CommandLine.Has("dry-run") Then Say(Counted(items.Count, "chapter"))
  WarnOfShortList(m)
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As InvalidArgumentException
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Function RegularChapters(m As Movie) As Chapter()
  Dim length As Double = SecondsOf(CommandLine.Value("every"))
  Dim items() As Chapter
  If length * m.TimeScale < 1 Then Raise New UsageError("--every " + CommandLine.Value("every") + " is shorter than a unit of the movie's time")
  If m.Duration / m.TimeScale / length > 32767 Then Raise New UsageError("--every " + CommandLine.Value("every") + " gives more chapters than a track can have")
  Dim start As Double
  While Round(start * m.TimeScale) < m.Duration
    items.Append New Chapter(Integer(Round(start * m.TimeScale)), "Chapter " + Str(items.Count + 1))
    start = items.Count * length
  Wend
  If items.Count = 0 Then Fail("the movie is empty", 1)
  Return items
End Function

' "90", "90s", "5m", "1.5h", "1h30m" or "00:05:00".
Function SecondsOf(text As String) As Double
  If InStr(text, ":") > 0 Then Return SecondsOfClock(text)
  If IsNumber(text) Then Return Val(text)
  Dim form As New RegEx("^(?:(\d+(?:\.\d+)?)h)?(?:(\d+(?:\.\d+)?)m)?(?:(\d+(?:\.\d+)?)s)?$")
  Dim found As RegExMatch = form.Search(text)
  If found Is Nil Or text = "" Then Raise New UsageError("""" + text + """ is no length of time; it is 90, 90s, 5m, 1h30m or 00:05:00")
  Return Part(found, 1) * 3600 + Part(found, 2) * 60 + Part(found, 3)
End Function

Function Part(found As RegExMatch, group As Integer) As Double
  If group >= found.SubExpressionCount Then Return 0
  Return Val(found.SubExpression(group))
End Function

' krz chapters export: the chapters of a movie as a file.
#Include "chapterForms.bas"

Try
  Dim form As String = "simple"
  If CommandLine.Has("format") Then form = Lowercase(CommandLine.Value("format"))
  Dim m As Movie = OpenMovie(Args(0))
  Dim list As ChapterList = WantedList(m)
  If list Is Nil Then list = New ChapterList
  Dim text As String = FormattedChapters(list, form, m)
  If list.Items.Count = 0 Then Fail(Args(0) + " has no chapters", 1)
  If CommandLine.Has("output") Then WriteFile(CommandLine.Value("output"), text) Else StdOut.Write(text)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub WriteFile(path As String, text As String)
  Try
    Dim file As TextOutputStream = TextOutputStream.Create(path, CommandLine.Has("force"))
    file.Write(text)
    file.Close
  Catch e As IOException
    Fail(e.Message, 5)
  End Try
End Sub

' krz chapters list --json: the chapters of a movie for a program.
#Include "chapterForms.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim wanted As ChapterList = WantedList(m)
  If wanted Is Nil Then wanted = New ChapterList
  Print ChapterDocument(wanted, m).ToString(True)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

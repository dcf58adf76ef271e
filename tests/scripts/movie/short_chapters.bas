' The short chapter list in user data is written, read back, and taken out again, and nothing else changes.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Print ShortChapterTimes(m).Count                               ' expect: 0
Dim none() As Int64, nothing() As String
SetShortChapters(m, none, nothing)
Print m.IsModified                                             ' expect: False
Dim times() As Int64, titles() As String
For i As Integer = 0 To 254
  times.Append Int64(i) * 123456789012
  titles.Append "Kapitel é " + Str(i)
Next
titles(1) = ""
SetShortChapters(m, times, titles)
m.Save
For Each one As Movie In Array(m, OpenMovie(path))
  Dim readTimes() As Int64 = ShortChapterTimes(one)
  Dim readTitles() As String = ShortChapterTitles(one)
  Print readTimes.Count, readTimes(254), readTitles(0), "[" + readTitles(1) + "]", readTitles(254)
Next
' expect: 255 31358024409048 Kapitel é 0 [] Kapitel é 254
' expect: 255 31358024409048 Kapitel é 0 [] Kapitel é 254
Print MovieProblems(m) = ""                                    ' expect: True

Sub Refused(m As Movie, times() As Int64, titles() As String)
  Try
    SetShortChapters(m, times, titles)
    Print "taken"
  Catch e As RuntimeException
    Print e.Message
  End Try
End Sub
titles(3) = ""
For i As Integer = 1 To 26
  titles(3) = titles(3) + "0123456789"
Next
Refused(m, times, titles)                                      ' expect: title 4 has more than the 255 bytes that fit
titles(3) = "short"
times.Append 1
Refused(m, times, titles)                                      ' expect: each chapter of the list has a time and a title
titles.Append "one too many"
Refused(m, times, titles)                                      ' expect: the short chapter list holds 255 chapters and no more
Print m.IsModified                                             ' expect: False
SetShortChapters(m, none, nothing)
m.Save
Print ShortChapterTitles(OpenMovie(path)).Count                ' expect: 0

' The list and the rest of the user data, changed before one save, are both there behind it.
ReDim times(-1)
ReDim titles(-1)
times.Append 0
titles.Append "One"
times.Append 20000000
titles.Append "Two"
Dim u As QTUserDataKRZ = m.UserDataKRZ
u.AddText("©cmt", 1, 21956, "both")
SetShortChapters(m, times, titles)
u.AddData("XYZ!", "raw")
m.Save
Dim both As Movie = OpenMovie(path)
Print ShortChapterTitles(both).Count, both.UserDataKRZ.GetText("©cmt", 1, 21956), both.UserDataKRZ.GetData("XYZ!", 1)   ' expect: 2 both raw

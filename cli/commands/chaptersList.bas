' krz chapters list: the chapters of a movie.
#Include "chapters.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  If CommandLine.Has("track") Then
    Dim wanted As ChapterList = WantedList(m)
    If wanted Is Nil Then Fail("that track has no chapters", 1)
    List(wanted, m)
  Else
    Dim lists() As ChapterList = ChapterLists(m)
    If lists.Count = 0 Then Print "no chapters"
    For i As Integer = 0 To lists.LastIndex
      If i > 0 Then Print ""
      If lists.Count > 1 Or lists(i).Track Is Nil Then Print Heading(lists(i))
      List(lists(i), m)
    Next
  End If
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

Function Heading(list As ChapterList) As String
  If list.Track Is Nil Then Return "the short list in user data"
  Dim names() As String
  For Each owner As QTTrackKRZ In list.Owners
    names.Append Str(owner.TrackID) + " (" + owner.MediaType + ")"
  Next
  Return "track " + Str(list.Track.TrackID) + ", chapters of track " + Join(names, ", ") + ", language " + TrackLanguage(list.Track.TrackHandle)
End Function

Sub List(list As ChapterList, m As Movie)
  Print CommandLine.Heading("   #          from            to  title")
  Dim start As String
  Dim scale As Integer = m.TimeScale
  If list.Items.Count > 0 Then start = PadLeft(ClockText(list.Items(0).Start, scale, 2), 14)
  For i As Integer = 0 To list.Items.LastIndex
    Dim finish As String = PadLeft(ClockText(list.EndOf(i), scale, 2), 14)
    Print PadLeft(Str(i + 1), 4) + start + finish + "  " + OneLine(list.Items(i).Title)
    start = finish
  Next
End Sub

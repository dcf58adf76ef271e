' krz chapters remove: removes chapters by their numbers, or all there are.
#Include "changes.bas"
#Include "chapters.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim m As Movie = change.Target
  If Args.Count > 1 Then RemoveSome(m) Else RemoveAll(m)
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(e.Message, 3)
End Try

' Without --track every list goes, the short one too.
Sub RemoveAll(m As Movie)
  If CommandLine.Has("track") Then
    Dim list As ChapterList = WantedList(m)
    If list Is Nil Then Fail("that track has no chapters", 1)
    RemoveTrack(list.Track.TrackHandle)
    Return
  End If
  For Each list As ChapterList In ChapterTracks(m)
    RemoveTrack(list.Track.TrackHandle)
  Next
  Dim times() As Int64, titles() As String
  SetShortChapters(m, times, titles)
End Sub

Sub RemoveSome(m As Movie)
  Dim list As ChapterList = WantedList(m)
  If list Is Nil Then Fail("the movie has no chapters", 1)
  Dim gone As New Dictionary
  For i As Integer = 1 To Args.LastIndex
    Dim number As Integer = Integer(Val(Args(i)))
    If Not IsNumber(Args(i)) Or number < 1 Or number > list.Items.Count Then Raise New UsageError("there is no chapter " + Args(i) + "; the movie has " + Str(list.Items.Count))
    gone.Value(number) = True
  Next
  Dim items() As Chapter
  For i As Integer = 0 To list.Items.LastIndex
    If Not gone.HasKey(i + 1) Then items.Append list.Items(i)
  Next
  If list.Track Is Nil Then
    WriteShortList(m, items)
    Return
  End If
  WriteChapters(m, items, list.Finish, list.Owners(0))
  WarnOfShortList(m)
End Sub

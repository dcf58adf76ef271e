' The chapters of a movie as lists, read from its tracks or from the short list in its user data.

Class Chapter
  Start As Integer     ' movie units
  Title As String
  Line As Integer      ' of the file that it was read from, 0 for none
  Sub Constructor(start As Integer, title As String, line As Integer = 0)
    Self.Start = start
    Self.Title = title
    Self.Line = line
  End Sub
End Class

' One list of chapters, and the tracks that it belongs to.
Class ChapterList
  Items() As Chapter
  Finish As Integer         ' where the last chapter ends, movie units
  Track As QTTrackKRZ       ' Nil for the short list
  Owners() As QTTrackKRZ    ' the tracks that name Track as their chapters
  Function EndOf(index As Integer) As Integer
    If index < Items.LastIndex Then Return Items(index + 1).Start
    Return Finish
  End Function
End Class

' Every list that tracks have, that of an enabled track first; the short list when there is no other.
Function ChapterLists(m As Movie) As ChapterList()
  Dim lists() As ChapterList = ChapterTracks(m)
  For Each list As ChapterList In lists
    ReadChapters(list)
  Next
  If lists.Count = 0 Then
    Dim short As ChapterList = ShortList(m)
    If short.Items.Count > 0 Then lists.Append short
  End If
  Return lists
End Function

' The lists of tracks, without what is in them.
Function ChapterTracks(m As Movie) As ChapterList()
  Dim lists() As ChapterList
  AddLists(lists, m, True)
  AddLists(lists, m, False)
  Return lists
End Function

' A track may name several as its chapters, pictures among them: the first that can be read counts.
Sub AddLists(lists() As ChapterList, m As Movie, enabled As Boolean)
  For i As Integer = 1 To m.TrackCountKRZ
    Dim owner As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If owner.TrackEnabled <> enabled Then Continue
    Dim type As String, id As Integer, number As Integer = 1
    While TrackReference(owner.TrackHandle, number, type, id)
      number = number + 1
      If StrComp(type, "chap", 0) <> 0 Then Continue
      Dim t As QTTrackKRZ = m.GetTrackIDKRZ(id)
      If t Is Nil Then Continue
      If Not IsText(t) Then Continue
      AddOwner(lists, t, owner)
      Exit While
    Wend
  Next
End Sub

Sub AddOwner(lists() As ChapterList, t As QTTrackKRZ, owner As QTTrackKRZ)
  For Each known As ChapterList In lists
    If known.Track.TrackID <> t.TrackID Then Continue
    known.Owners.Append owner
    Return
  Next
  Dim list As New ChapterList
  list.Track = t
  list.Owners.Append owner
  lists.Append list
End Sub

Function IsText(t As QTTrackKRZ) As Boolean
  Return t.MediaType = "text" Or t.MediaType = "sbtl"
End Function

Sub ReadChapters(list As ChapterList)
  Dim times() As Integer
  Dim titles() As String = TrackTexts(list.Track.TrackHandle, times)
  For i As Integer = 0 To titles.LastIndex
    list.Items.Append New Chapter(times(i), titles(i))
  Next
  If titles.Count > 0 Then list.Finish = times(titles.Count)
End Sub

' The list in user data that some players read in place of a chapter track. Its units are 100 ns.
Function ShortList(m As Movie) As ChapterList
  Dim list As New ChapterList
  Dim times() As Int64 = ShortChapterTimes(m)
  Dim titles() As String = ShortChapterTitles(m)
  For i As Integer = 0 To titles.LastIndex
    Dim units As Double = Round(times(i) / 10000000.0 * m.TimeScale)
    list.Items.Append New Chapter(Integer(Max(0, Min(units, 2147483647))), titles(i))
  Next
  list.Finish = m.Duration
  Return list
End Function

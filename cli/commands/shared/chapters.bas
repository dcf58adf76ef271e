' Lists of chapters chosen, written into tracks and into the short list in user data.
#Include "chapterLists.bas"
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"

' The list that a command works on: of the track that --track names, else the first. Nil without any.
Function WantedList(m As Movie) As ChapterList
  Dim lists() As ChapterList = ChapterLists(m)
  If Not CommandLine.Has("track") Then
    If lists.Count = 0 Then Return Nil
    Return lists(0)
  End If
  Dim wanted As Integer = SelectTrack(m, CommandLine.Value("track")).TrackID
  For Each list As ChapterList In lists
    If list.Track Is Nil Then Continue
    If list.Track.TrackID = wanted Then Return list
    For Each owner As QTTrackKRZ In list.Owners
      If owner.TrackID = wanted Then Return list
    Next
  Next
  Return Nil
End Function

' Where chapters belong when nothing else is said: the first picture track, else the first sound track.
Function ChapterOwner(m As Movie) As QTTrackKRZ
  If CommandLine.Has("track") Then
    Dim wanted As QTTrackKRZ = SelectTrack(m, CommandLine.Value("track"))
    If IsText(wanted) Then Raise New UsageError("track " + Str(wanted.TrackID) + " is a text track; chapters belong to one of pictures or sound")
    Return wanted
  End If
  Dim owner As QTTrackKRZ = m.GetVideoTrackKRZ(1, True)
  If owner Is Nil Then owner = m.GetSoundTrackKRZ(1, True)
  If owner Is Nil Then owner = m.GetVideoTrackKRZ(1)
  If owner Is Nil Then owner = m.GetSoundTrackKRZ(1)
  If owner Is Nil Then Fail("the movie has no pictures and no sound that chapters could belong to", 1)
  Return owner
End Function

' Puts a new chapter track in the place of the one that `owner` has; tracks that shared that one get the new one, too.
Sub WriteChapters(m As Movie, items() As Chapter, finish As Integer, owner As QTTrackKRZ)
  Dim owners() As QTTrackKRZ
  owners.Append owner
  Dim language As String = CommandLine.Value("language")
  For Each list As ChapterList In ChapterTracks(m)
    If Not IsOwned(list, owner) Then Continue
    For Each other As QTTrackKRZ In list.Owners
      If other.TrackID <> owner.TrackID Then owners.Append other
    Next
    If language = "" Then language = TrackLanguage(list.Track.TrackHandle)
    RemoveTrack(list.Track.TrackHandle)
  Next
  If items.Count = 0 Then Return
  If items.Count > 32767 Then Fail("a chapter track can have 32767 chapters at most, not " + Str(items.Count), 1)
  Dim t As QTChapterTrackKRZ = AddChapters(m, items, finish, owner)
  If t Is Nil Then Fail("the chapter track cannot be made", 1)
  If t.MediaSampleCount <> items.Count Then Fail("the chapter track cannot be filled; can the movie's file be written?", 5)
  ' Players take the titles of a chapter track, and would draw those of one that is enabled.
  t.TrackEnabled = False
  If items(0).Start > 0 Then t.TimeOffset = items(0).Start
  If language <> "" Then SetTrackLanguage(t.TrackHandle, language)
  For Each named As QTTrackKRZ In owners
    AddReference(named.TrackHandle, t.TrackHandle, "chap")
  Next
End Sub

Function IsOwned(list As ChapterList, owner As QTTrackKRZ) As Boolean
  For Each other As QTTrackKRZ In list.Owners
    If other.TrackID = owner.TrackID Then Return True
  Next
  Return False
End Function

' Text gets the time scale of the media of the track that it is placed below. So that chapters begin exactly where they
' should, that track is one of the movie's own scale, which is there for a moment only.
Function AddChapters(m As Movie, items() As Chapter, finish As Integer, owner As QTTrackKRZ) As QTChapterTrackKRZ
  Const kPlaceholder = "krz-"
  Dim records() As QTChapterDataKRZ
  For i As Integer = 0 To items.LastIndex
    Dim record As New QTChapterDataKRZ
    record.Text = items(i).Title
    If i < items.LastIndex Then record.FrameDuration = items(i + 1).Start - items(i).Start Else record.FrameDuration = finish - items(i).Start
    records.Append record
  Next
  Dim placeholder As Integer = NewTrack(m, kPlaceholder, m.TimeScale, owner.Width, owner.Height)
  Dim t As QTChapterTrackKRZ = m.AddTextTrackKRZ(records, kPlaceholder, False)
  RemoveTrack(placeholder)
  Return t
End Function

' A title for forms that have a line for it.
Function OneLine(title As String) As String
  Return Trim(ReplaceLineEndings(title, " "))
End Function

' "01:02:03.500"
Function ChapterClock(time As Int64, m As Movie) As String
  Return ClockText(time, m.TimeScale, 2)
End Function

' Whether the short list says what another list says, to a thousandth of a second.
Function SaysTheSame(short As ChapterList, list As ChapterList, m As Movie) As Boolean
  If short.Items.Count <> list.Items.Count Then Return False
  For i As Integer = 0 To short.Items.LastIndex
    If StrComp(short.Items(i).Title, list.Items(i).Title, 0) <> 0 Then Return False
    If Abs(short.Items(i).Start - list.Items(i).Start) > Max(1, m.TimeScale \ 1000) Then Return False
  Next
  Return True
End Function

' Says when a short list that was there has been left behind by a change.
Sub WarnOfShortList(m As Movie)
  Dim short As ChapterList = ShortList(m)
  If short.Items.Count = 0 Then Return
  Dim lists() As ChapterList = ChapterLists(m)
  If lists.Count > 0 Then
    If SaysTheSame(short, lists(0), m) Then Return
  End If
  CommandLine.Report("warning: the short chapter list in user data still says what it said; `krz chapters convert --to short` writes it anew")
End Sub

' The short list holds 255 chapters with titles of 255 bytes; beyond that only with --allow-loss.
Sub WriteShortList(m As Movie, items() As Chapter)
  Dim times() As Int64, titles() As String
  Dim lost() As String
  For i As Integer = 0 To items.LastIndex
    If i = 255 Then
      lost.Append "chapters 256 to " + Str(items.Count)
      Exit For
    End If
    Dim title As String = items(i).Title
    If LenB(title) > 255 Then lost.Append "the end of title " + Str(i + 1)
    While LenB(title) > 255
      title = Left(title, Len(title) - 1)
    Wend
    times.Append Int64(Round(items(i).Start * 10000000.0 / m.TimeScale))
    titles.Append title
  Next
  If lost.Count > 0 Then
    Dim text As String = "the short list has no room for " + Join(lost, ", ")
    If Not CommandLine.Has("allow-loss") Then Fail(text + "; --allow-loss leaves that out", 4)
    CommandLine.Report("warning: " + text)
  End If
  SetShortChapters(m, times, titles)
End Sub

' krz info --json: what is in a movie, for programs. One document; an array of them for several movies.
#Include "chapterLists.bas"
#Include "items.bas"
#Include "descriptions.bas"
#Include "apertures.bas"
#Include "timecodeItem.bas"

Dim worst As Integer = 0
Dim documents As New JSONItem("[]")
For i As Integer = 0 To Args.Ubound
  Try
    Dim m As Movie = OpenMovie(Args(i))
    documents.Append(MovieDocument(m, Args(i)))
    m.Check
  Catch e As IOException
    StdErr.WriteLine("krz: " + e.Message)
    worst = 3
  End Try
Next

If Args.Ubound > 0 Then
  Print documents.ToString(True)
ElseIf documents.Count = 1 Then
  Print documents.ChildAt(0).ToString(True)
End If
Quit(worst)

' The movie as a document whose keys stand in their documented order. Times are in the movie's time scale.
Function MovieDocument(m As Movie, path As String) As JSONItem
  Dim document As New JSONItem
  document.Value("file") = path
  document.Value("timeScale") = m.TimeScale
  document.Value("duration") = m.Duration
  document.Value("seconds") = m.Duration / m.TimeScale
  document.Value("trackCount") = m.TrackCountKRZ
  document.Value("apertureMode") = m.GetMovieApertureModeKRZ
  document.Value("hasChapterTrack") = m.HasQTChapterTrackKRZ
  document.Value("hasTimeCodeTrack") = m.HasTimeCodeTrackKRZ
  Dim tracks As New JSONItem("[]")
  For i As Integer = 1 To m.TrackCountKRZ
    tracks.Append(TrackDocument(m.GetTrackIndexKRZ(i), i))
  Next
  document.Value("tracks") = tracks
  document.Value("chapters") = ChapterDocuments(m)
  document.Value("timeCode") = FirstTimeCode(m)
  document.Value("metaData") = ItemDocuments(m.MetaDataKRZ)
  document.Value("userData") = UserDataDocuments(m.UserDataKRZ)
  Return document
End Function

Function TrackDocument(t As QTTrackKRZ, index As Integer) As JSONItem
  Dim document As New JSONItem
  document.Value("index") = index
  document.Value("id") = t.TrackID
  document.Value("mediaType") = CodeText(t.MediaType)
  document.Value("enabled") = t.TrackEnabled
  document.Value("duration") = t.Duration
  document.Value("offset") = t.TimeOffset
  document.Value("width") = t.Width
  document.Value("height") = t.Height
  document.Value("layer") = t.Layer
  document.Value("volume") = t.TrackVolume
  document.Value("created") = TimeDocument(t.TrackCreationTime)
  document.Value("modified") = TimeDocument(t.TrackModificationTime)
  document.Value("matrix") = MatrixDocument(t)
  document.Value("sampleCount") = t.MediaSampleCount
  document.Value("fileCount") = t.FileCount
  Dim descriptions As New JSONItem("[]")
  For i As Integer = 1 To t.MediaSampleDescriptionCount
    descriptions.Append(DescriptionDocument(t, i))
  Next
  document.Value("sampleDescriptions") = descriptions
  document.Value("isChapterTrack") = t.IsChapterTrack
  document.Value("chapterTrack") = ChapterTrackDocument(t)
  document.Value("metaData") = ItemDocuments(t.MetaData)
  document.Value("userData") = UserDataDocuments(t.UserData)
  document.Value("mediaTimeScale") = MediaTimeScale(t.TrackHandle)
  document.Value("apertures") = AperturesDocument(t)
  Return document
End Function

' The chapters of the movie's first chapter track; times in movie units.
Function ChapterDocuments(m As Movie) As JSONItem
  Dim documents As New JSONItem("[]")
  Dim lists() As ChapterList = ChapterTracks(m)
  If lists.Count = 0 Then Return documents
  ReadChapters(lists(0))
  For i As Integer = 0 To lists(0).Items.LastIndex
    Dim document As New JSONItem
    document.Value("time") = lists(0).Items(i).Start
    document.Value("duration") = lists(0).EndOf(i) - lists(0).Items(i).Start
    document.Value("text") = lists(0).Items(i).Title
    documents.Append(document)
  Next
  Return documents
End Function

' The time code of the first timecode track at media time 0, Nil without one.
Function FirstTimeCode(m As Movie) As Variant
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If t.MediaType <> "tmcd" Then Continue
    Dim c As QTTimeCodeKRZ = t.TimeCodeAtTime(0)
    If c Is Nil Then Return Nil
    Return TimeCodeDocument(c, t)
  Next
  Return Nil
End Function

' The ID of the track that a track names as its chapters first, Nil for none.
Function ChapterTrackDocument(t As QTTrackKRZ) As Variant
  Dim chapters As QTChapterTrackKRZ = t.ChapterTrack
  If chapters Is Nil Then Return Nil
  Return chapters.TrackID
End Function

' A moment of the file as text, Nil when the file does not say.
Function TimeDocument(seconds As Integer) As Variant
  If seconds = 0 Then Return Nil
  Return MomentText(seconds)
End Function

Function MatrixDocument(t As QTTrackKRZ) As JSONItem
  Dim m(8) As Integer
  t.GetTrackRawMatrix(m(0), m(1), m(2), m(3), m(4), m(5), m(6), m(7), m(8))
  Dim document As New JSONItem("[]")
  For i As Integer = 0 To 8
    document.Append(m(i))
  Next
  Return document
End Function

' "2001-02-03T04:05:06Z" of seconds since 1904 that stand as unsigned 32 bits in an Integer.
Function MomentText(seconds As Integer) As String
  Dim total As Int64 = seconds
  If total < 0 Then total = total + 4294967296
  Dim dayTime As Integer = Integer(total Mod 86400)
  ' Days since 1 March of the year 0; a year that begins in March ends in its leap day.
  Dim day As Integer = Integer(total \ 86400) + 695361
  Dim era As Integer = day \ 146097
  Dim dayOfEra As Integer = day - era * 146097
  Dim yearOfEra As Integer = (dayOfEra - dayOfEra \ 1460 + dayOfEra \ 36524 - dayOfEra \ 146096) \ 365
  Dim dayOfYear As Integer = dayOfEra - (365 * yearOfEra + yearOfEra \ 4 - yearOfEra \ 100)
  Dim month As Integer = (5 * dayOfYear + 2) \ 153
  Dim year As Integer = yearOfEra + era * 400
  Dim dayOfMonth As Integer = dayOfYear - (153 * month + 2) \ 5 + 1
  If month < 10 Then
    month = month + 3
  Else
    month = month - 9
    year = year + 1
  End If
  Return Digits(year, 4) + "-" + Digits(month, 2) + "-" + Digits(dayOfMonth, 2) + "T" + Digits(dayTime \ 3600, 2) + ":" + Digits((dayTime \ 60) Mod 60, 2) + ":" + Digits(dayTime Mod 60, 2) + "Z"
End Function

' A number with zeros in front up to `count` digits, four at most.
Function Digits(value As Integer, count As Integer) As String
  Dim text As String = Str(value)
  Return Left("0000", count - Len(text)) + text
End Function

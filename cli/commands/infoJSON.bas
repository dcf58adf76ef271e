' krz info --json: what is in a movie, for programs. One document; an array of them for several movies.

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
  document.Value("apertureMode") = Nil
  document.Value("hasChapterTrack") = False
  document.Value("hasTimeCodeTrack") = False
  Dim tracks As New JSONItem("[]")
  For i As Integer = 1 To m.TrackCountKRZ
    tracks.Append(TrackDocument(m.GetTrackIndexKRZ(i), i))
  Next
  document.Value("tracks") = tracks
  document.Value("chapters") = New JSONItem("[]")
  document.Value("timeCode") = Nil
  document.Value("metaData") = New JSONItem("[]")
  document.Value("userData") = New JSONItem("[]")
  Return document
End Function

Function TrackDocument(t As QTTrackKRZ, index As Integer) As JSONItem
  Dim document As New JSONItem
  document.Value("index") = index
  document.Value("id") = t.TrackID
  document.Value("mediaType") = CodeDocument(t.MediaType)
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
    Dim description As New JSONItem
    description.Value("codecType") = FormatOf(t, i)
    descriptions.Append(description)
  Next
  document.Value("sampleDescriptions") = descriptions
  document.Value("isChapterTrack") = False
  document.Value("chapterTrack") = Nil
  document.Value("metaData") = New JSONItem("[]")
  document.Value("userData") = New JSONItem("[]")
  Return document
End Function

' A four-character code, Nil when the file does not say: the code is then four zero bytes.
Function CodeDocument(code As String) As Variant
  If code = "" Or Asc(code) = 0 Then Return Nil
  Return code
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

' The four-character code of a sample description: bytes 4 to 7 of its record.
Function FormatOf(t As QTTrackKRZ, index As Integer) As String
  Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(index)
  If raw Is Nil Then Return ""
  If raw.Size < 8 Then Return ""
  Return ConvertEncoding(DefineEncoding(raw.StringValue(4, 4), Encodings.MacRoman), Encodings.UTF8)
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

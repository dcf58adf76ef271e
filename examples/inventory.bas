' Lists every movie of a folder and the folders in it as CSV, for a spreadsheet:
'   krz run examples/inventory.bas FOLDER > movies.csv
'
' One line a movie: path, bytes, seconds, the first picture's format and size and its pictures a second, the formats
' of all sound tracks, the number of text tracks. What cannot be read gets a line that says why, and status 1.
Const kSeparator = ","

If Args.Count <> 1 Then
  StdErr.WriteLine("usage: krz run inventory.bas FOLDER")
  Quit(2)
End If
Dim failures As Integer
Dim folder As FolderItem = GetFolderItem(Args(0))
If Not folder.Exists Or Not folder.IsFolder Then
  StdErr.WriteLine(Args(0) + ": there is no such folder")
  Quit(2)
End If
Print "path,bytes,seconds,video,width,height,fps,sound,text tracks,problem"
ListFolder(folder, "")
If failures > 0 Then
  StdErr.WriteLine(Str(failures) + " could not be read")
  Quit(1)
End If

' Walks a folder in the order of its names; `prefix` is the way here from where the walk began.
Sub ListFolder(place As FolderItem, prefix As String)
  For i As Integer = 0 To place.Count - 1
    Dim item As FolderItem = place.ChildAt(i)
    If item.IsFolder Then
      ListFolder(item, prefix + item.Name + "/")
    ElseIf IsMovieName(item.Name) Then
      ListMovie(item, prefix + item.Name)
    End If
  Next
End Sub

Function IsMovieName(name As String) As Boolean
  Select Case Lowercase(NthField(name, ".", CountFields(name, ".")))
  Case "mov", "mp4", "m4v", "m4a", "m4b", "qt"
    Return True
  Else
    Return False
  End Select
End Function

Sub ListMovie(file As FolderItem, name As String)
  Dim fields() As String
  fields.Append Quoted(name)
  fields.Append Str(file.Length)
  Try
    Dim m As Movie = OpenMovie(file.Path)
    fields.Append Format(m.Duration / m.TimeScale, "0.000")
    AppendVideo(fields, m)
    fields.Append Quoted(SoundFormats(m))
    fields.Append Str(TextTracks(m))
    fields.Append ""
  Catch e As IOException
    While fields.Count < 9
      fields.Append ""
    Wend
    fields.Append Quoted(e.Message)
    failures = failures + 1
  End Try
  Print Join(fields, kSeparator)
End Sub

' Format, width, height and pictures a second of the first picture track; four empty fields without one.
Sub AppendVideo(fields() As String, m As Movie)
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  If t Is Nil Then
    For i As Integer = 1 To 4
      fields.Append ""
    Next
    Return
  End If
  fields.Append Quoted(CodecOf(t))
  fields.Append Str(t.Width)
  fields.Append Str(t.Height)
  Dim seconds As Double = (t.Duration - t.TimeOffset) / m.TimeScale
  If seconds > 0 Then fields.Append Format(t.MediaSampleCount / seconds, "0.###") Else fields.Append ""
End Sub

Function SoundFormats(m As Movie) As String
  Dim formats() As String
  Dim i As Integer = 1
  Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(i)
  While Not (t Is Nil)
    formats.Append CodecOf(t)
    i = i + 1
    t = m.GetSoundTrackKRZ(i)
  Wend
  Return Join(formats, " ")
End Function

Function TextTracks(m As Movie) As Integer
  Dim count As Integer
  For i As Integer = 1 To m.TrackCountKRZ
    If m.GetTrackIndexKRZ(i).MediaType = "text" Then count = count + 1
  Next
  Return count
End Function

' The four characters by which the first sample description names its format.
Function CodecOf(t As QTTrackKRZ) As String
  Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(1)
  If raw Is Nil Then Return "?"
  Return Trim(ConvertEncoding(DefineEncoding(raw.StringValue(4, 4), Encodings.MacRoman), Encodings.UTF8))
End Function

' A field of CSV: in quotes when it needs them.
Function Quoted(text As String) As String
  Dim special As Boolean = InStr(text, ",") > 0 Or InStr(text, """") > 0 Or InStr(text, Chr(10)) > 0
  If Not special Then Return text
  Return """" + ReplaceAll(text, """", """""") + """"
End Function

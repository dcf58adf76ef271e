' Makes a web page of a folder's movies, one row each, with the tracks drawn to scale:
'   krz run examples/movie_page.bas FOLDER PAGE.html
'
' The page stands alone: no script, no picture files. An existing page is not replaced.
Const kWidth = 320    ' of a movie's drawing, pixels

If Args.Count <> 2 Then
  StdErr.WriteLine("usage: krz run movie_page.bas FOLDER PAGE.html")
  Quit(2)
End If
Dim folder As FolderItem = GetFolderItem(Args(0))
If Not folder.IsFolder Then
  StdErr.WriteLine(Args(0) + ": there is no such folder")
  Quit(2)
End If
Dim page As TextOutputStream = TextOutputStream.Create(Args(1))
Dim movies As Integer, unread As Integer
Dim total As Double
WriteHead(folder.Name)
For i As Integer = 0 To folder.Count - 1
  Dim item As FolderItem = folder.ChildAt(i)
  If Not item.IsFolder And IsMovieName(item.Name) Then WriteMovie(item)
Next
page.WriteLine("</table>")
page.WriteLine("<p>" + Str(movies) + " movies, " + Clock(total) + " in all</p>")
page.WriteLine("</body></html>")
page.Close
Print "wrote " + Args(1) + ":", movies, "movies,", unread, "not readable"

Sub WriteHead(title As String)
  page.WriteLine("<!doctype html><html><head><meta charset=""utf-8""><title>" + Escaped(title) + "</title>")
  page.WriteLine("<style>")
  page.WriteLine("body { font: 14px sans-serif; margin: 2em } td, th { padding: 4px 12px; text-align: left; vertical-align: top }")
  page.WriteLine("tr:nth-child(even) { background: #f4f4f4 } .problem { color: #a00 }")
  page.WriteLine("</style></head><body>")
  page.WriteLine("<h1>" + Escaped(title) + "</h1>")
  page.WriteLine("<table><tr><th>Movie</th><th>Length</th><th>Picture</th><th>Size</th><th>Tracks</th></tr>")
End Sub

Sub WriteMovie(file As FolderItem)
  Dim row As String = "<tr><td>" + Escaped(file.Name) + "</td>"
  Try
    Dim m As Movie = OpenMovie(file.Path)
    Dim seconds As Double = m.Duration / m.TimeScale
    row = row + "<td>" + Clock(seconds) + "</td><td>" + PictureSize(m) + "</td>"
    row = row + "<td>" + Format(file.Length / 1000000, "#,##0.0") + " MB</td><td>" + Drawing(m) + "</td></tr>"
    movies = movies + 1
    total = total + seconds
  Catch e As IOException
    row = row + "<td colspan=""4"" class=""problem"">" + Escaped(e.Message) + "</td></tr>"
    unread = unread + 1
  End Try
  page.WriteLine(row)
End Sub

' A bar for each track, where it lies in the movie.
Function Drawing(m As Movie) As String
  Dim count As Integer = m.TrackCountKRZ
  Dim text As String = "<svg width=""" + Str(kWidth) + """ height=""" + Str(count * 10) + """>"
  For i As Integer = 1 To count
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    If m.Duration > 0 Then
      Dim x As Double = t.TimeOffset / m.Duration * kWidth
      Dim width As Double = Max((t.Duration - t.TimeOffset) / m.Duration * kWidth, 1)
      text = text + "<rect x=""" + Format(x, "0.0") + """ y=""" + Str(i * 10 - 9) + """ width=""" + Format(width, "0.0")
      text = text + """ height=""8"" fill=""" + ColorOf(t.MediaType) + """><title>" + Escaped(t.MediaType) + "</title></rect>"
    End If
  Next
  Return text + "</svg>"
End Function

Function ColorOf(mediaType As String) As String
  Select Case mediaType
  Case "vide"
    Return "#3b6fb6"
  Case "soun"
    Return "#4a9a5a"
  Case "text", "sbtl"
    Return "#c08a2b"
  Else
    Return "#888888"
  End Select
End Function

Function PictureSize(m As Movie) As String
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  If t Is Nil Then Return ""
  Return Str(t.Width) + " x " + Str(t.Height)
End Function

Function Escaped(text As String) As String
  Return ReplaceAll(ReplaceAll(ReplaceAll(text, "&", "&amp;"), "<", "&lt;"), """", "&quot;")
End Function

Function Clock(seconds As Double) As String
  Dim whole As Integer = Integer(Round(seconds))
  Return Str(whole \ 3600) + ":" + Format(whole \ 60 Mod 60, "00") + ":" + Format(whole Mod 60, "00")
End Function

Function IsMovieName(name As String) As Boolean
  Dim ending As String = Lowercase(NthField(name, ".", CountFields(name, ".")))
  Return ending = "mov" Or ending = "mp4" Or ending = "m4v" Or ending = "m4a"
End Function

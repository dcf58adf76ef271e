' Names movies after the moment they were made, as their first track says it: 2024-05-01 18.30.12.mov
'   krz run examples/rename_by_date.bas FOLDER            shows what would be renamed
'   krz run examples/rename_by_date.bas FOLDER --rename   does it
'
' Two movies of one second get " (2)", " (3)" ... behind the time. A movie without a date, or with that of a
' camera whose clock was never set, keeps its name. Nothing is ever replaced.
Const kFrom1904To1970 = 2082844800.0    ' seconds; movies count from 1904

Dim rename As Boolean = Args.Count = 2
If rename Then rename = Args(1) = "--rename"
If Args.Count < 1 Or (Args.Count > 1 And Not rename) Then
  StdErr.WriteLine("usage: krz run rename_by_date.bas FOLDER [--rename]")
  Quit(2)
End If
Dim folder As FolderItem = GetFolderItem(Args(0))
If Not folder.IsFolder Then
  StdErr.WriteLine(Args(0) + ": there is no such folder")
  Quit(2)
End If

' The listing changes while files are renamed: take the names first.
Dim names() As String
For i As Integer = 0 To folder.Count - 1
  Dim item As FolderItem = folder.ChildAt(i)
  If Not item.IsFolder And IsMovieName(item.Name) Then names.Append item.Name
Next
Dim renamed As Integer, kept As Integer
Dim taken As New Dictionary
For Each name As String In names
  RenameOne(name)
Next
If rename Then Print renamed, "renamed,", kept, "kept" Else Print renamed, "would be renamed,", kept, "kept"

Sub RenameOne(name As String)
  Dim moment As DateTime
  Try
    moment = DateOf(folder.Child(name).Path)
  Catch e As IOException
    StdErr.WriteLine(e.Message)
  End Try
  If moment Is Nil Then
    kept = kept + 1
    Return
  End If
  Dim target As String = FreeName(moment, Extension(name), name)
  taken.Value(target) = True
  If target = name Then
    kept = kept + 1
    Return
  End If
  Print name, "->", target
  If rename Then folder.Child(name).MoveTo(folder.Child(target))
  renamed = renamed + 1
End Sub

' When the first track was made; Nil when the file does not say it, or says nonsense.
Function DateOf(path As String) As DateTime
  Dim m As Movie = OpenMovie(path)
  If m.TrackCountKRZ = 0 Then Return Nil
  ' Read as a signed number, moments after 1972 are negative.
  Dim seconds As Double = m.GetTrackIndexKRZ(1).TrackCreationTime
  If seconds < 0 Then seconds = seconds + 4294967296.0
  If seconds < kFrom1904To1970 + 365 * 86400.0 Then Return Nil
  Return DateTime.FromSeconds(seconds - kFrom1904To1970)
End Function

Function FreeName(moment As DateTime, extension As String, present As String) As String
  Dim day As String = Format(moment.Year, "0000") + "-" + Format(moment.Month, "00") + "-" + Format(moment.Day, "00")
  Dim time As String = Format(moment.Hour, "00") + "." + Format(moment.Minute, "00") + "." + Format(moment.Second, "00")
  Dim name As String = day + " " + time + "." + extension
  Dim number As Integer = 2
  While name <> present And (taken.HasKey(name) Or folder.Child(name).Exists)
    name = day + " " + time + " (" + Str(number) + ")." + extension
    number = number + 1
  Wend
  Return name
End Function

Function Extension(name As String) As String
  Return NthField(name, ".", CountFields(name, "."))
End Function

Function IsMovieName(name As String) As Boolean
  Dim ending As String = Extension(name)
  Return ending = "mov" Or ending = "mp4" Or ending = "m4v" Or ending = "m4a"
End Function

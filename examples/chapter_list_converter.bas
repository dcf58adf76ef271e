' Converts lists of chapters between the forms that programs use: krz run examples/chapter_list_converter.bas FORM < LIST
'
' FORM is one of   simple       00:01:30.000 Title
'                  ogm          CHAPTER01=00:01:30.000 and CHAPTER01NAME=Title
'                  csv          seconds,title
'                  webvtt       a cue for each chapter
'                  json         an array of {"start", "title"}
' Which of the first four forms the list has is found out from the list itself.
Const kForms = "simple, ogm, csv, webvtt, json"

If Args.Count <> 1 Then
  StdErr.WriteLine("usage: krz run chapter_list_converter.bas FORM < LIST, where FORM is one of " + kForms)
  Quit(2)
End If
Dim starts() As Double    ' seconds, of each chapter
Dim titles() As String
ReadList
If starts.Count = 0 Then
  StdErr.WriteLine("no chapter was found; a line is, for example, ""00:01:30.000 Title""")
  Quit(1)
End If
Select Case Args(0)
Case "simple"
  For i As Integer = 0 To starts.LastIndex
    Print Clock(starts(i)), titles(i)
  Next
Case "ogm"
  For i As Integer = 0 To starts.LastIndex
    Dim number As String = Format(i + 1, "00")
    Print "CHAPTER" + number + "=" + Clock(starts(i))
    Print "CHAPTER" + number + "NAME=" + titles(i)
  Next
Case "csv"
  For i As Integer = 0 To starts.LastIndex
    Print Format(starts(i), "0.000") + ",""" + ReplaceAll(titles(i), """", """""") + """"
  Next
Case "webvtt"
  WriteCues
Case "json"
  WriteJSON
Else
  StdErr.WriteLine("""" + Args(0) + """ is not a form; it is one of " + kForms)
  Quit(2)
End Select

Sub ReadList()
  Dim ogmStart As New RegEx("^CHAPTER\d+=\s*(\d+:\d+:\d+(?:\.\d+)?)\s*$")
  Dim ogmName As New RegEx("^CHAPTER\d+NAME=(.*)$")
  Dim cue As New RegEx("^(\d+:\d+(?::\d+)?\.\d+)\s+-->\s+")
  Dim simple As New RegEx("^(\d+:\d+(?::\d+)?(?:\.\d+)?)\s+(.*)$")
  Dim csv As New RegEx("^(\d+(?:\.\d+)?),""?(.*?)""?$")
  Dim waiting As Boolean    ' a start was read, its title comes in the next line
  Dim lineNumber As Integer
  While Not EndOfInput
    Dim line As String = Trim(Input())
    lineNumber = lineNumber + 1
    Dim m As RegExMatch = ogmName.Search(line)
    If Not (m Is Nil) And starts.Count > 0 Then
      titles(titles.LastIndex) = m.SubExpression(1)
      Continue
    End If
    m = ogmStart.Search(line)
    If Not (m Is Nil) Then
      AddChapter(Seconds(m.SubExpression(1)), "", lineNumber)
      Continue
    End If
    m = cue.Search(line)
    If Not (m Is Nil) Then
      AddChapter(Seconds(m.SubExpression(1)), "", lineNumber)
      waiting = True
      Continue
    End If
    If waiting Then
      titles(titles.LastIndex) = line
      waiting = False
      Continue
    End If
    m = simple.Search(line)
    If Not (m Is Nil) Then
      AddChapter(Seconds(m.SubExpression(1)), m.SubExpression(2), lineNumber)
      Continue
    End If
    m = csv.Search(line)
    If Not (m Is Nil) Then AddChapter(Val(m.SubExpression(1)), ReplaceAll(m.SubExpression(2), """""", """"), lineNumber)
  Wend
End Sub

Sub AddChapter(start As Double, title As String, lineNumber As Integer)
  If starts.Count > 0 Then
    If start < starts(starts.LastIndex) Then StdErr.WriteLine("line " + Str(lineNumber) + " starts before the chapter above it")
  End If
  starts.Append start
  titles.Append title
End Sub

Sub WriteCues()
  Print "WEBVTT"
  For i As Integer = 0 To starts.LastIndex
    Dim ending As Double = starts(i) + 1
    If i < starts.LastIndex Then ending = starts(i + 1)
    Print ""
    Print Clock(starts(i)) + " --> " + Clock(ending)
    Print titles(i)
  Next
End Sub

Sub WriteJSON()
  Dim list As New JSONItem
  For i As Integer = 0 To starts.LastIndex
    Dim chapter As New JSONItem
    chapter.Value("start") = starts(i)
    chapter.Value("title") = titles(i)
    list.Append chapter
  Next
  Print list.ToString(True)
End Sub

' "1:02:03.5" or "2:03.5" in seconds.
Function Seconds(clock As String) As Double
  Dim total As Double
  For Each part As String In Split(clock, ":")
    total = total * 60 + Val(part)
  Next
  Return total
End Function

Function Clock(seconds As Double) As String
  Dim thousandths As Int64 = Int64(Round(seconds * 1000))
  Dim whole As Integer = Integer(thousandths \ 1000)
  Return Format(whole \ 3600, "00") + ":" + Format(whole \ 60 Mod 60, "00") + ":" + _
    Format(whole Mod 60, "00") + "." + Format(Integer(thousandths Mod 1000), "000")
End Function

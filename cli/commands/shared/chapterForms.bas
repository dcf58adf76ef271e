' Chapters written in the forms of files: simple, ogm, webvtt, ffmetadata, csv, json.
#Include "chapters.bas"

Const kForms = "simple, ogm, webvtt, ffmetadata, csv, json"

' Lists in a form, as text. Line breaks of titles stay where the form has a way to say them.
Function FormattedChapters(list As ChapterList, form As String, m As Movie) As String
  Dim lines() As String
  Select Case form
  Case "simple"
    For Each item As Chapter In list.Items
      lines.Append ChapterClock(item.Start, m) + " " + OneLine(item.Title)
    Next
  Case "ogm"
    For i As Integer = 0 To list.Items.LastIndex
      Dim number As String = Str(i + 1)
      If Len(number) < 2 Then number = "0" + number
      lines.Append "CHAPTER" + number + "=" + ChapterClock(list.Items(i).Start, m)
      lines.Append "CHAPTER" + number + "NAME=" + OneLine(list.Items(i).Title)
    Next
  Case "webvtt"
    lines.Append "WEBVTT"
    For i As Integer = 0 To list.Items.LastIndex
      lines.Append ""
      lines.Append ChapterClock(list.Items(i).Start, m) + " --> " + ChapterClock(list.EndOf(i), m)
      lines.Append CueText(list.Items(i).Title)
    Next
  Case "ffmetadata"
    lines.Append ";FFMETADATA1"
    For i As Integer = 0 To list.Items.LastIndex
      lines.Append "[CHAPTER]"
      lines.Append "TIMEBASE=1/" + Str(m.TimeScale)
      lines.Append "START=" + Str(list.Items(i).Start)
      lines.Append "END=" + Str(list.EndOf(i))
      lines.Append "title=" + EscapedMetadata(list.Items(i).Title)
    Next
  Case "csv"
    lines.Append "start,end,title"
    For i As Integer = 0 To list.Items.LastIndex
      lines.Append ChapterClock(list.Items(i).Start, m) + "," + ChapterClock(list.EndOf(i), m) + ",""" + ReplaceAll(list.Items(i).Title, """", """""") + """"
    Next
  Case "json"
    Return ChapterDocument(list, m).ToString(True) + Chr(10)
  Else
    Raise New UsageError("""" + form + """ is not a form of chapters; it is one of " + kForms)
  End Select
  If lines.Count = 0 Then Return ""
  Return Join(lines, Chr(10)) + Chr(10)
End Function

Function ChapterDocument(list As ChapterList, m As Movie) As JSONItem
  Dim document As New JSONItem("[]")
  For i As Integer = 0 To list.Items.LastIndex
    Dim item As New JSONItem
    item.Value("time") = list.Items(i).Start
    item.Value("duration") = list.EndOf(i) - list.Items(i).Start
    item.Value("timeScale") = m.TimeScale
    item.Value("text") = list.Items(i).Title
    document.Append item
  Next
  Return document
End Function

' Cues end at an empty line, and hold no "-->".
Function CueText(title As String) As String
  Dim text As String = ReplaceAll(ReplaceAll(title, Chr(13) + Chr(10), Chr(10)), Chr(13), Chr(10))
  While InStr(text, Chr(10) + Chr(10)) > 0
    text = ReplaceAll(text, Chr(10) + Chr(10), Chr(10))
  Wend
  Return ReplaceAll(ReplaceAll(ReplaceAll(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;")
End Function

Function EscapedMetadata(title As String) As String
  Dim text As String = title
  For Each special As String In Array("\", "=", ";", "#", Chr(10))
    text = ReplaceAll(text, special, "\" + special)
  Next
  Return text
End Function

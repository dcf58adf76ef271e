' Chapters read from files in all the forms that are written, and in those of other programs.
#Include "chapters.bas"

' Reads a file of chapters in any of the forms, and finds out in which.
Class ChapterReader
  Items() As Chapter
  Finish As Integer             ' where the last chapter ends: as the file says, else the movie's end
  Private name As String        ' for messages
  Private lines() As String
  Private m As Movie
  Private lastEnd As Double = -1    ' seconds, of the chapter that was read last

  ' "-" is standard input. Ends the command when the file cannot be read or holds a mistake.
  Sub Constructor(path As String, m As Movie)
    Self.m = m
    Self.name = path
    Dim text As String
    If path = "-" Then
      Self.name = "standard input"
      Dim parts() As String
      While Not EndOfInput
        parts.Append Input()
      Wend
      text = Join(parts, Chr(10))
    Else
      text = TextInputStream.Open(path).ReadAll
    End If
    If Len(text) > 0 Then
      If Asc(text) = 65279 Then text = Mid(text, 2)
    End If
    lines = Split(ReplaceAll(ReplaceAll(text, Chr(13) + Chr(10), Chr(10)), Chr(13), Chr(10)), Chr(10))
    CheckEncoding(text)
    ReadForm
    If Items.Count = 0 Then Fail(name + ": no chapter was found; a line is, for example, ""00:01:30.000 Title""", 3)
    Finish = m.Duration
    Dim given As Double = Round(lastEnd * m.TimeScale)
    If given > Items(Items.LastIndex).Start And given < Finish Then Finish = Integer(given)
  End Sub

  Private Sub ReadForm()
    Dim first As Integer
    While first < lines.Count
      If Trim(lines(first)) <> "" Then Exit While
      first = first + 1
    Wend
    If first = lines.Count Then Return
    Dim line As String = Trim(lines(first))
    Dim cue As New RegEx("-->")
    Dim simple As New RegEx("^\d+:\d+(:\d+)?([.,]\d+)?\s")
    Dim csv As New RegEx("^(""?start""?\s*[,;\t]|""?[\d:.]+""?\s*[,;\t])")
    Dim secondLine As String
    If first + 1 < lines.Count Then secondLine = lines(first + 1)
    If Left(line, 6) = "WEBVTT" Or Not (cue.Search(line + secondLine) Is Nil) Then
      ReadWebVTT
    ElseIf Left(line, 11) = ";FFMETADATA" Then
      ReadMetadata
    ElseIf Left(line, 1) = "[" Or Left(line, 1) = "{" Then
      ReadJSON
    ElseIf Left(line, 7) = "CHAPTER" Then
      ReadOGM
    ElseIf simple.Search(line) Is Nil And Not (csv.Search(line) Is Nil) Then
      ReadCSV
    Else
      ReadSimple
    End If
  End Sub

  Private Sub ReadSimple()
    Dim form As New RegEx("^(\d+(?::\d+){0,2}(?:[.,]\d+)?)(?:\s+(.*))?$")
    For i As Integer = 0 To lines.LastIndex
      Dim line As String = Trim(lines(i))
      If line = "" Or Left(line, 1) = "#" Then Continue
      Dim found As RegExMatch = form.Search(line)
      If found Is Nil Then Wrong(i + 1, "a chapter is a time and a title, such as ""00:01:30.000 Title"", not """ + Left(line, 60) + """")
      Dim title As String
      If found.SubExpressionCount > 2 Then title = found.SubExpression(2)
      Add(Seconds(found.SubExpression(1), i + 1), -1, title, i + 1)
    Next
  End Sub

  Private Sub ReadOGM()
    Dim form As New RegEx("^CHAPTER(\d+)(NAME)?=(.*)$")
    Dim start As Double = -1, number As String
    For i As Integer = 0 To lines.LastIndex
      If Trim(lines(i)) = "" Then Continue
      Dim found As RegExMatch = form.Search(Trim(lines(i)))
      If found Is Nil Then Wrong(i + 1, "a line of this form is CHAPTER01=00:01:30.000 or CHAPTER01NAME=Title")
      If found.SubExpression(2) = "" Then
        If start >= 0 Then Wrong(i + 1, "chapter " + number + " has no name")
        start = Seconds(Trim(found.SubExpression(3)), i + 1)
        number = found.SubExpression(1)
      Else
        If start < 0 Or StrComp(number, found.SubExpression(1), 0) <> 0 Then Wrong(i + 1, "the time of chapter " + found.SubExpression(1) + " must stand in front of its name")
        Add(start, -1, found.SubExpression(3), i + 1)
        start = -1
      End If
    Next
    If start >= 0 Then Wrong(lines.Count, "chapter " + number + " has no name")
  End Sub

  Private Sub ReadWebVTT()
    Dim form As New RegEx("^\s*([\d:.,]+)\s+-->\s+([\d:.,]+)")
    Dim i As Integer
    While i < lines.Count
      Dim found As RegExMatch = form.Search(lines(i))
      i = i + 1
      If found Is Nil Then Continue
      Dim start As Double = Seconds(found.SubExpression(1), i)
      Dim finish As Double = Seconds(found.SubExpression(2), i)
      Dim cueLine As Integer = i
      Dim parts() As String
      ReDim parts(-1)
      While i < lines.Count
        If Trim(lines(i)) = "" Then Exit While
        parts.Append lines(i)
        i = i + 1
      Wend
      Dim text As String = Join(parts, Chr(10))
      Add(start, finish, ReplaceAll(ReplaceAll(ReplaceAll(text, "&lt;", "<"), "&gt;", ">"), "&amp;", "&"), cueLine)
    Wend
  End Sub

  Private Sub ReadMetadata()
    Dim inside As Boolean, base As Double, start As Double, finish As Double, title As String, line As Integer
    Dim i As Integer
    While i < lines.Count
      Dim text As String = lines(i)
      Dim number As Integer = i + 1
      ' A line break of a value stands behind a backslash.
      While EndsInBackslash(text) And i + 1 < lines.Count
        i = i + 1
        text = text + Chr(10) + lines(i)
      Wend
      i = i + 1
      If Left(text, 1) = "[" Then
        If inside Then Add(start, finish, title, line)
        inside = Lowercase(Trim(text)) = "[chapter]"
        base = 1 / 1000000000
        start = -1
        finish = -1
        title = ""
        line = number
        Continue
      End If
      If Not inside Or Left(text, 1) = ";" Or Left(text, 1) = "#" Then Continue
      Dim value As String = Mid(text, InStr(text, "=") + 1)
      Select Case Lowercase(NthField(text, "=", 1))
      Case "timebase"
        If CountFields(value, "/") <> 2 Or Val(NthField(value, "/", 2)) <= 0 Then Wrong(number, "a time base is 1/1000")
        base = Val(NthField(value, "/", 1)) / Val(NthField(value, "/", 2))
      Case "start"
        start = WholeNumber(value, number) * base
      Case "end"
        finish = WholeNumber(value, number) * base
      Case "title"
        title = Unescaped(value)
      End Select
    Wend
    If inside Then Add(start, finish, title, line)
  End Sub

  Private Function WholeNumber(text As String, line As Integer) As Double
    If Not IsNumber(Trim(text)) Then Wrong(line, """" + text + """ is not a number of units from 0")
    Return Val(text)
  End Function

  Private Function EndsInBackslash(text As String) As Boolean
    Dim count As Integer
    While count < Len(text)
      If Mid(text, Len(text) - count, 1) <> "\" Then Exit While
      count = count + 1
    Wend
    Return count Mod 2 = 1
  End Function

  Private Function Unescaped(text As String) As String
    If InStr(text, "\") = 0 Then Return text
    Dim parts() As String
    Dim i As Integer = 1
    While i <= Len(text)
      If Mid(text, i, 1) = "\" Then i = i + 1
      parts.Append Mid(text, i, 1)
      i = i + 1
    Wend
    Return Join(parts, "")
  End Function

  Private Sub ReadCSV()
    Dim i As Integer
    While i < lines.Count
      Dim number As Integer = i + 1
      Dim text As String = lines(i)
      ' A field in quotes may go on in the next line.
      While IsOpen(text) And i + 1 < lines.Count
        i = i + 1
        text = text + Chr(10) + lines(i)
      Wend
      i = i + 1
      If Trim(text) = "" Or (number = 1 And Left(Replace(text, """", ""), 5) = "start") Then Continue
      Dim fields() As String = CSVFields(text)
      If fields.Count < 2 Then Wrong(number, "a chapter is a start, perhaps an end, and a title, with commas between them")
      Dim finish As Double = -1
      If fields.Count > 2 And Trim(fields(1)) <> "" Then finish = Seconds(Trim(fields(1)), number)
      Add(Seconds(Trim(fields(0)), number), finish, fields(Min(2, fields.LastIndex)), number)
    Wend
  End Sub

  ' Whether a quoted field has begun and not ended.
  Private Function IsOpen(text As String) As Boolean
    If InStr(text, """") = 0 Then Return False
    Return CountFields(text, """") Mod 2 = 0
  End Function

  Private Function CSVFields(text As String) As String()
    Dim separator As String = ","
    If InStr(text, ",") = 0 Then separator = ";"
    If InStr(text, ",") = 0 And InStr(text, ";") = 0 Then separator = Chr(9)
    Dim pieces() As String = Split(text, separator)
    Dim fields() As String
    Dim i As Integer
    While i < pieces.Count
      Dim field As String = pieces(i)
      ' A separator inside of quotes belongs to the field.
      While IsOpen(field) And i + 1 < pieces.Count
        i = i + 1
        field = field + separator + pieces(i)
      Wend
      i = i + 1
      If Left(Trim(field), 1) = """" And Right(Trim(field), 1) = """" And Len(Trim(field)) > 1 Then
        field = Mid(Trim(field), 2, Len(Trim(field)) - 2)
        field = ReplaceAll(field, """""", """")
      End If
      fields.Append field
    Wend
    Return fields
  End Function

  ' An array of chapters, or an object that has one, as `krz info --json` and ffprobe write.
  Private Sub ReadJSON()
    Dim document As JSONItem
    Try
      document = New JSONItem(Join(lines, Chr(10)))
    Catch e As JSONException
      Fail(name + ": " + e.Message, 3)
    End Try
    Dim scale As Double = m.TimeScale
    If Not document.IsArray Then
      If document.HasKey("timeScale") Then scale = document.Value("timeScale")
      If Not document.HasKey("chapters") Then Fail(name + ": the document is no array of chapters and has none", 3)
      document = document.Child("chapters")
    End If
    For i As Integer = 0 To document.Count - 1
      Dim item As JSONItem = document.ChildAt(i)
      Dim start As Double = -1, finish As Double = -1
      Dim units As Double = scale
      If item.HasKey("timeScale") Then units = item.Value("timeScale")
      If item.HasKey("time") Then
        start = CDbl(item.Value("time")) / units
        If item.HasKey("duration") Then finish = (CDbl(item.Value("time")) + CDbl(item.Value("duration"))) / units
      ElseIf item.HasKey("start_time") Then
        start = CDbl(item.Value("start_time"))
        If item.HasKey("end_time") Then finish = CDbl(item.Value("end_time"))
      ElseIf item.HasKey("start") Then
        start = CDbl(item.Value("start"))
      End If
      Add(start, finish, JSONTitle(item), i + 1)
    Next
  End Sub

  Private Function JSONTitle(item As JSONItem) As String
    If item.HasKey("text") Then Return item.Value("text")
    If item.HasKey("title") Then Return item.Value("title")
    If item.HasKey("tags") Then
      Dim tags As JSONItem = item.Child("tags")
      If tags.HasKey("title") Then Return tags.Value("title")
    End If
    Return ""
  End Function

  ' "01:02:03.5", "02:03.5" or "123.5"; a comma serves for the point, too.
  Private Function Seconds(text As String, line As Integer) As Double
    Dim total As Double
    Dim fields() As String = Split(Replace(text, ",", "."), ":")
    If fields.Count > 3 Then Wrong(line, """" + text + """ is not a time")
    For i As Integer = 0 To fields.LastIndex
      If Not IsNumber(fields(i)) Then Wrong(line, """" + text + """ is not a time; write hours, minutes and seconds as 01:02:03.500")
      If i > 0 And Val(fields(i)) >= 60 Then Wrong(line, """" + text + """ is not a time: minutes and seconds go up to 59")
      total = total * 60 + Val(fields(i))
    Next
    Return total
  End Function

  Private Sub Add(start As Double, finish As Double, title As String, line As Integer)
    If start < 0 Then Wrong(line, "the chapter has no time from 0 on")
    If Trim(title) = "" Then Wrong(line, "the chapter has no title")
    If Len(title) > 16000 Then Wrong(line, "the title has " + Str(Len(title)) + " characters, which no sample holds")
    Dim units As Double = Round(start * m.TimeScale)
    If units >= m.Duration Then Wrong(line, "the chapter begins at " + Format(start, "0.000") + " s, where the movie has ended: it is " + Format(m.Duration / m.TimeScale, "0.000") + " s long")
    If Items.Count > 0 Then
      If units <= Items(Items.LastIndex).Start Then Wrong(line, "the chapter does not begin behind the one before it")
    End If
    Items.Append New Chapter(Integer(units), title, line)
    lastEnd = finish
  End Sub

  Private Sub Wrong(line As Integer, text As String)
    Fail(name + ":" + Str(line) + ": " + text, 3)
  End Sub

  Private Sub CheckEncoding(text As String)
    If IsSound(text) Then Return
    For i As Integer = 0 To lines.LastIndex
      If Not IsSound(lines(i)) Then Wrong(i + 1, "the text is not UTF-8")
    Next
  End Sub

  Private Function IsSound(text As String) As Boolean
    ' Each byte that is no UTF-8 becomes a character of three.
    Return LenB(ConvertEncoding(ConvertEncoding(text, Encodings.UTF16), Encodings.UTF8)) = LenB(text)
  End Function
End Class

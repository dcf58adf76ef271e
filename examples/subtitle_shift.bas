' Moves the subtitles of an SRT file, and stretches them for another picture rate:
'   krz run examples/subtitle_shift.bas FILE SECONDS [FROM-RATE TO-RATE] > NEW-FILE
'
' Subtitles that would begin before zero are left out and counted; the rest are numbered anew.
If Args.Count <> 2 And Args.Count <> 4 Then
  StdErr.WriteLine("usage: krz run subtitle_shift.bas FILE SECONDS [FROM-RATE TO-RATE]")
  Quit(2)
End If
Dim shift As Double = Val(Args(1))
Dim stretch As Double = 1
If Args.Count = 4 Then
  If Val(Args(3)) <= 0 Or Val(Args(2)) <= 0 Then
    StdErr.WriteLine("a rate is a number of pictures a second, such as 25 or 23.976")
    Quit(2)
  End If
  stretch = Val(Args(2)) / Val(Args(3))
End If

Dim times As New RegEx("^(\d+):(\d+):(\d+)[,.](\d+)\s*-->\s*(\d+):(\d+):(\d+)[,.](\d+)(.*)$")
Dim file As TextInputStream = TextInputStream.Open(Args(0))
Dim number As Integer, dropped As Integer, lineNumber As Integer
Dim keeping As Boolean
Dim text() As String    ' lines of the subtitle being read
While Not file.EndOfFile
  Dim line As String = file.ReadLine
  lineNumber = lineNumber + 1
  If lineNumber = 1 And Left(line, 1) = Chr(&hFEFF) Then line = Mid(line, 2)
  Dim m As RegExMatch = times.Search(line)
  If Not (m Is Nil) Then
    Dim start As Double = Moved(m, 1)
    Dim ending As Double = Moved(m, 5)
    ' The line above was the number of this subtitle.
    If text.Count > 0 Then
      Dim numberLine As String = text.Pop
      If Not IsNumber(numberLine) Then text.Append numberLine
    End If
    Flush
    keeping = ending > 0
    If keeping Then
      number = number + 1
      Print number
      Print Clock(Max(start, 0)) + " --> " + Clock(ending) + m.SubExpression(9)
    Else
      dropped = dropped + 1
    End If
  Else
    text.Append line
  End If
Wend
Flush
If number = 0 And dropped = 0 Then
  StdErr.WriteLine(Args(0) + ": no subtitle was found")
  Quit(1)
End If
If dropped > 0 Then StdErr.WriteLine(Str(dropped) + " subtitles ended before zero and were left out")

' Prints the lines of the subtitle that ends here, and an empty line.
Sub Flush()
  If keeping Then
    For Each line As String In text
      If Trim(line) <> "" Then Print line
    Next
    Print ""
  End If
  ReDim text(-1)
End Sub

Function IsNumber(text As String) As Boolean
  Return Trim(text) <> "" And Trim(text) = Str(Integer(Val(text)))
End Function

' The time in four groups of a match, shifted and stretched, in seconds.
Function Moved(m As RegExMatch, group As Integer) As Double
  Dim seconds As Double = Val(m.SubExpression(group)) * 3600 + Val(m.SubExpression(group + 1)) * 60 + Val(m.SubExpression(group + 2))
  seconds = seconds + Val("0." + m.SubExpression(group + 3))
  Return seconds * stretch + shift
End Function

Function Clock(seconds As Double) As String
  Dim thousandths As Int64 = Int64(Round(seconds * 1000))
  Dim whole As Integer = Integer(thousandths \ 1000)
  Return Format(whole \ 3600, "00") + ":" + Format(whole \ 60 Mod 60, "00") + ":" + _
    Format(whole Mod 60, "00") + "," + Format(Integer(thousandths Mod 1000), "000")
End Function

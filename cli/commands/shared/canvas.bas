' What a map is drawn on: SVG text, or a picture for a PNG file. Units are those of the SVG; y runs downward.

Class Canvas
  ' A rectangle; `hint` is what a viewer shows when the pointer rests on it.
  Sub Box(x As Double, y As Double, width As Double, height As Double, fill As Color, hint As String = "")
  End Sub
  Sub Outline(x As Double, y As Double, width As Double, height As Double, stroke As Color)
    Line(x, y, x + width, y, stroke)
    Line(x + width, y, x + width, y + height, stroke)
    Line(x + width, y + height, x, y + height, stroke)
    Line(x, y + height, x, y, stroke)
  End Sub
  Sub Line(x1 As Double, y1 As Double, x2 As Double, y2 As Double, stroke As Color, thickness As Double = 1)
  End Sub
  Sub Dashes(x1 As Double, x2 As Double, y As Double, stroke As Color)
    Dim x As Double = x1
    While x < x2
      Line(x, y, Min(x + 4, x2), y, stroke)
      x = x + 8
    Wend
  End Sub
  ' `anchor` is "start", "middle" or "end": the part of the text that stands at x.
  Sub Text(text As String, x As Double, y As Double, size As Integer, fill As Color, bold As Boolean = False, anchor As String = "start")
  End Sub
  ' How wide a text is at most.
  Function Wide(text As String, size As Integer) As Double
    Return 0
  End Function
  ' As much of a text as fits.
  Function Fitted(text As String, size As Integer, width As Double) As String
    If Len(text) > 200 Then text = Left(text, 200) + "…"
    If Wide(text, size) <= width Then Return text
    Dim most As Integer = Len(text) - 1
    Dim least As Integer = 0
    While least < most
      Dim middle As Integer = (least + most + 1) \ 2
      If Wide(Left(text, middle) + "…", size) <= width Then least = middle Else most = middle - 1
    Wend
    If least < 1 Then Return ""
    Return Trim(Left(text, least)) + "…"
  End Function
  ' Writes what was drawn to a file, or to standard output for "-".
  Sub Finish(path As String, overwrite As Boolean)
  End Sub
End Class

Class SVGCanvas Inherits Canvas
  Private parts() As String
  Sub Constructor(width As Integer, height As Integer, title As String)
    parts.Append "<svg xmlns=""http://www.w3.org/2000/svg"" width=""" + Str(width) + """ height=""" + Str(height) + """ viewBox=""0 0 " + Str(width) + " " + Str(height) + """ xml:space=""preserve"" font-family=""Helvetica, Arial, 'DejaVu Sans', sans-serif"">"
    parts.Append "<title>" + Escaped(title) + "</title>"
    Box(0, 0, width, height, &cFFFFFF)
  End Sub
  Sub Box(x As Double, y As Double, width As Double, height As Double, fill As Color, hint As String = "")
    Dim text As String = "<rect x=""" + Number(x) + """ y=""" + Number(y) + """ width=""" + Number(width) + """ height=""" + Number(height) + """ fill=""" + Code(fill) + """"
    If hint = "" Then parts.Append text + "/>" Else parts.Append text + "><title>" + Escaped(hint) + "</title></rect>"
  End Sub
  Sub Outline(x As Double, y As Double, width As Double, height As Double, stroke As Color)
    parts.Append "<rect x=""" + Number(x) + """ y=""" + Number(y) + """ width=""" + Number(width) + """ height=""" + Number(height) + """ fill=""none"" stroke=""" + Code(stroke) + """/>"
  End Sub
  Sub Line(x1 As Double, y1 As Double, x2 As Double, y2 As Double, stroke As Color, thickness As Double = 1)
    parts.Append LineFrom(x1, y1, x2, y2, stroke) + " stroke-width=""" + Number(thickness) + """/>"
  End Sub
  Sub Dashes(x1 As Double, x2 As Double, y As Double, stroke As Color)
    parts.Append LineFrom(x1, y, x2, y, stroke) + " stroke-dasharray=""4 4""/>"
  End Sub
  Sub Text(text As String, x As Double, y As Double, size As Integer, fill As Color, bold As Boolean = False, anchor As String = "start")
    If text = "" Then Return
    Dim line As String = "<text x=""" + Number(x) + """ y=""" + Number(y) + """ font-size=""" + Str(size) + """ fill=""" + Code(fill) + """"
    If bold Then line = line + " font-weight=""bold"""
    If anchor <> "start" Then line = line + " text-anchor=""" + anchor + """"
    parts.Append line + ">" + Escaped(text) + "</text>"
  End Sub
  ' Whoever shows it takes a font of its own: this is that of a wide one.
  Function Wide(text As String, size As Integer) As Double
    Dim total As Double
    For i As Integer = 1 To Len(text)
      Dim code As Integer = Asc(Mid(text, i, 1))
      If code >= &h1100 And code <> 8230 Then
        total = total + 1
      ElseIf InStr("iljtfr.,:;'|! ()", Chr(code)) > 0 Then
        total = total + 0.38
      ElseIf code >= 65 And code <= 90 Then
        total = total + 0.74
      Else
        total = total + 0.61
      End If
    Next
    Return total * size
  End Function
  Sub Finish(path As String, overwrite As Boolean)
    parts.Append "</svg>"
    Dim document As String = Join(parts, Chr(10)) + Chr(10)
    If path = "-" Then
      StdOut.Write(document)
      Return
    End If
    Dim file As TextOutputStream = TextOutputStream.Create(path, overwrite)
    file.Write(document)
    file.Close
  End Sub
  Private Function LineFrom(x1 As Double, y1 As Double, x2 As Double, y2 As Double, stroke As Color) As String
    Return "<line x1=""" + Number(x1) + """ y1=""" + Number(y1) + """ x2=""" + Number(x2) + """ y2=""" + Number(y2) + """ stroke=""" + Code(stroke) + """"
  End Function
  Private Function Number(value As Double) As String
    Return Str(Round(value * 10) / 10)
  End Function
  Private Function Code(value As Color) As String
    Return "#" + Right(Str(value), 6)
  End Function
  ' What XML has no place for, even as a number, becomes the sign for what is missing.
  Private Function Escaped(text As String) As String
    Dim result As String = ReplaceAll(ReplaceAll(ReplaceAll(ReplaceAll(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;"), """", "&quot;")
    Return New RegEx("[^\x{20}-\x{D7FF}\x{E000}-\x{FFFD}\x{10000}-\x{10FFFF}]").ReplaceAll(result, "�")
  End Function
End Class

' Twice as fine as the units, for screens and paper.
Class PNGCanvas Inherits Canvas
  Private Const kScale = 2
  Private p As Picture
  Private g As Graphics
  Sub Constructor(width As Integer, height As Integer)
    p = New Picture(width * kScale, height * kScale, 32)
    g = p.Graphics
  End Sub
  Sub Box(x As Double, y As Double, width As Double, height As Double, fill As Color, hint As String = "")
    g.ForeColor = fill
    Dim left As Integer = Place(x)
    Dim top As Integer = Place(y)
    g.FillRect(left, top, Max(Place(x + width) - left, 1), Max(Place(y + height) - top, 1))
  End Sub
  Sub Line(x1 As Double, y1 As Double, x2 As Double, y2 As Double, stroke As Color, thickness As Double = 1)
    g.ForeColor = stroke
    g.PenWidth = Max(1, Place(thickness))
    Dim half As Double = thickness / 2
    g.DrawLine(Place(x1 - half), Place(y1 - half), Place(x2 - half), Place(y2 - half))
  End Sub
  Sub Text(text As String, x As Double, y As Double, size As Integer, fill As Color, bold As Boolean = False, anchor As String = "start")
    g.ForeColor = fill
    g.TextSize = size * kScale
    g.Bold = bold
    Dim left As Double = x * kScale
    If anchor = "middle" Then left = left - g.StringWidth(text) / 2
    If anchor = "end" Then left = left - g.StringWidth(text)
    g.DrawString(text, Integer(Round(left)), Place(y))
  End Sub
  Function Wide(text As String, size As Integer) As Double
    g.TextSize = size * kScale
    g.Bold = False
    Return g.StringWidth(text) / kScale
  End Function
  Sub Finish(path As String, overwrite As Boolean)
    If Not overwrite And GetFolderItem(path).Exists Then Raise New IOException("cannot create """ + path + """: File exists; -f replaces it")
    p.Save(path)
  End Sub
  Private Function Place(value As Double) As Integer
    Return Integer(Round(Max(-1000000, Min(value, 1000000)) * kScale))
  End Function
End Class

' `part` of one color in another, 0 to 1.
Function Mixed(over As Color, under As Color, part As Double) As Color
  Dim a As Integer = Integer(over), b As Integer = Integer(under)
  Return RGB(MixedPart(a \ 65536, b \ 65536, part), MixedPart(a \ 256 Mod 256, b \ 256 Mod 256, part), MixedPart(a Mod 256, b Mod 256, part))
End Function

Function MixedPart(over As Integer, under As Integer, part As Double) As Integer
  Return Integer(Round(over * part + under * (1 - part)))
End Function

' Every field of a chapter is in the saved file, byte by byte.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim c As New QTChapterDataKRZ
c.Text = "Hi" : c.FrameDuration = 600 : c.FontNumber = 21 : c.FontSize = 18 : c.bold = True
c.underline = True : c.extend = True : c.HasTextColor = True : c.TextColor = &cFF8000 : c.HasBackColor = True
c.BackColor = &c010203 : c.HasHighLightColor = True : c.HighLightColor = &c00FF00 : c.HighLightStart = 1
c.HighLightEnd = 2 : c.TextJustification = QTChapterDataKRZ.teRight
c.DisplayFlags = QTChapterDataKRZ.dfScrollIn + QTChapterDataKRZ.dfTextColorHilite : c.ScrollDelay = 25
c.Left = -2 : c.Top = 3 : c.Width = 100
Dim plain As New QTChapterDataKRZ
plain.Text = "Hi" : plain.FrameDuration = 600
Dim again As New QTChapterDataKRZ
again.Text = "other text, same look" : again.FrameDuration = 600
' A highlight that ends where it begins is none, and no colour makes one.
again.HighLightStart = 4 : again.HighLightEnd = 4 : again.BackColor = &cFFFFFF
Dim list() As QTChapterDataKRZ = Array(c, plain, again)
Print m.AddTextTrackKRZ(list, "vide", True).MediaSampleDescriptionCount   ' expect: 2
m.Save
Dim t As QTChapterTrackKRZ = OpenMovie(path).GetTextTrackKRZ(1)

Sub ShowHex(data As MemoryBlock)
  Dim line As String
  For i As Integer = 0 To data.Size - 1
    line = line + Right("0" + Hex(data.Byte(i)), 2)
    If i Mod 4 = 3 Then line = line + " "
  Next
  Print Trim(line)
End Sub
Sub ShowSample(t As QTChapterTrackKRZ, time As Integer)
  Dim data As MemoryBlock, description As MemoryBlock
  Dim duration, index, count, flags As Integer
  Dim found As Boolean = t.GetMediaSample(data, time, duration, description, index, 1, count, flags)
  ShowHex(data)
  Print found, duration, index, count, flags
End Sub
ShowSample(t, 0)
' expect: 0006FEFF 00480069 00000010 686C6974 00000001 00000002 0000000E 68636C72 0000FFFF 00000000 000C646C 61790000 00190000 000C656E 63640000 0100
' expect: True 600 1 1 0
ShowSample(t, 600)
' expect: 0006FEFF 00480069 0000000C 656E6364 00000100
' expect: True 600 2 1 0
ShowHex(t.MediaSampleDescriptionRaw(1))
' expect: 00000044 74657874 00000000 00000001 00010020 FFFFFFFF 01010202 03030003 FFFE00F3 00620000 00000000 00000015 45000012 FFFF8080 00000948 656C7665 74696361
ShowHex(t.MediaSampleDescriptionRaw(2))
' expect: 0000003B 74657874 00000000 00000001 00000004 00000001 FFFFFFFF FFFF0000 000000F0 01400000 00000000 00000000 00000000 00000000 000000

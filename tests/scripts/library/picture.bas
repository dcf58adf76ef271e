' Pictures and what draws on them; the same however the host keeps their pixels.

Sub Row(p As Picture, y As Integer)
  Dim texts() As String
  Dim surface As RGBSurface = p.RGBSurface
  For x As Integer = 0 To p.Width - 1
    texts.Append Str(surface.Pixel(x, y))
  Next
  Print Join(texts, " ")
End Sub

' Without a depth there is alpha, and nothing to see; with one all is white.
Dim clear As New Picture(3, 2)
Print clear.Width, clear.Height, clear.HasAlphaChannel   ' expect: 3 2 True
Dim white As New Picture(3, 2, 32)
Print white.HasAlphaChannel                              ' expect: False
Row(clear, 1)                                            ' expect: &c000000 &c000000 &c000000
Row(white, 1)                                            ' expect: &cFFFFFF &cFFFFFF &cFFFFFF
white.RGBSurface.Pixel(1, 1) = &c0A141E
clear.RGBSurface.Pixel(2, 1) = &cFFFEFD
Row(white, 1)                                            ' expect: &cFFFFFF &c0A141E &cFFFFFF
Row(white, 0)                                            ' expect: &cFFFFFF &cFFFFFF &cFFFFFF
Row(clear, 1)                                            ' expect: &c000000 &c000000 &cFFFEFD

' Settings stay with the picture.
white.Graphics.ForeColor = &c112233
white.Graphics.PenWidth = 3
white.Graphics.TextSize = 9
white.Graphics.TextFont = "Zürich"
white.Graphics.Bold = True
Dim g As Graphics = white.Graphics
Print g.ForeColor, g.PenWidth, g.TextSize, g.TextFont, g.Bold, g.Width, g.Height   ' expect: &c112233 3 9 Zürich True 3 2

' Shapes, cut at the edges.
g.FillRect(1, -5, 99, 6)
Row(white, 0)                                            ' expect: &cFFFFFF &c112233 &c112233
g.FillRect(0, 0, 0, 2)
g.FillRect(2147483647, 2147483647, 2147483647, 2147483647)
g.FillRect(-2147483647, 1, 2147483647, 1)
g.FillOval(0, 0, -1, 2)
Row(white, 1)                                            ' expect: &cFFFFFF &c0A141E &cFFFFFF
Dim board As New Picture(5, 5, 32)
board.Graphics.ForeColor = &c0000FF
board.Graphics.DrawLine(1, 2, 3, 2)
Row(board, 1)                                            ' expect: &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF
Row(board, 2)                                            ' expect: &cFFFFFF &c0000FF &c0000FF &c0000FF &cFFFFFF
board.Graphics.DrawLine(4, 4, 4, 3)
board.Graphics.DrawLine(0, 0, 0, 0)
Row(board, 3)                                            ' expect: &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF &c0000FF
Row(board, 0)                                            ' expect: &c0000FF &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF
board.Graphics.DrawLine(-2000000000, 2000000000, 2000000000, -2000000000)

' An oval covers its middle whole, its corners not at all, and about pi quarters of its rectangle.
Dim round As New Picture(40, 20, 32)
round.Graphics.ForeColor = &c000000
round.Graphics.FillOval(0, 0, 40, 20)
Print round.RGBSurface.Pixel(20, 10), round.RGBSurface.Pixel(0, 0), round.RGBSurface.Pixel(39, 19)   ' expect: &c000000 &cFFFFFF &cFFFFFF
Dim dark As Double
For y As Integer = 0 To 19
  For x As Integer = 0 To 39
    dark = dark + (255 - Integer(round.RGBSurface.Pixel(x, y)) Mod 256) / 255
  Next
Next
Print Abs(dark - 3.14159265 * 20 * 10) < 3                ' expect: True

' A picture on another: whole, scaled, a part of it, and with alpha.
Dim source As New Picture(4, 2, 32)
source.RGBSurface.Pixel(0, 0) = &cFF0000
source.RGBSurface.Pixel(3, 1) = &c00FF00
Dim target As New Picture(6, 2, 32)
target.Graphics.DrawPicture(source, 2, 0)
Row(target, 0)                                            ' expect: &cFFFFFF &cFFFFFF &cFF0000 &cFFFFFF &cFFFFFF &cFFFFFF
Row(target, 1)                                            ' expect: &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF &cFFFFFF &c00FF00
target.Graphics.DrawPicture(source, 0, 0, 2, 2, 3, 1, 1, 1)
Row(target, 0)                                            ' expect: &c00FF00 &c00FF00 &cFF0000 &cFFFFFF &cFFFFFF &cFFFFFF
target.Graphics.DrawPicture(source, 0, 0, 6, 2, 0, 0, 1, 1)
Row(target, 1)                                            ' expect: &cFF0000 &cFF0000 &cFF0000 &cFF0000 &cFF0000 &cFF0000
target.Graphics.DrawPicture(source, 0, 0, 4, 2, 2, 0, 4, 2)   ' half of the part lies outside
Row(target, 1)                                            ' expect: &cFFFFFF &c00FF00 &cFF0000 &cFF0000 &cFF0000 &cFF0000
target.Graphics.DrawPicture(source, 0, 0, 4, 2, 9, 0, 4, 2)
target.Graphics.DrawPicture(source, 0, 0, 0, 2)
Dim glass As New Picture(2, 1)
glass.RGBSurface.Pixel(0, 0) = &c0000FF
target.Graphics.DrawPicture(glass, 4, 1)
Row(target, 1)                                            ' expect: &cFFFFFF &c00FF00 &cFF0000 &cFF0000 &c0000FF &cFF0000
target.Graphics.DrawPicture(target, 1, 0)                  ' itself as it was
Row(target, 1)                                            ' expect: &cFFFFFF &cFFFFFF &c00FF00 &cFF0000 &cFF0000 &c0000FF

' To a file and back, over one that is there.
target.Save("target.png")
Dim read As Picture = Picture.Open("target.png")
Print read.Width, read.Height, read.HasAlphaChannel       ' expect: 6 2 False
Row(read, 1)                                              ' expect: &cFFFFFF &cFFFFFF &c00FF00 &cFF0000 &cFF0000 &c0000FF
Dim half As New Picture(1, 1)
half.Graphics.DrawPicture(source, 0, 0, 1, 1, 0, 0, 1, 1)
half.Save(GetFolderItem("target.png"))
read = Picture.Open(GetFolderItem("target.png"))
Print read.Width, read.HasAlphaChannel, read.RGBSurface.Pixel(0, 0)   ' expect: 1 True &cFF0000
clear.Save("target.png")
Row(Picture.Open("target.png"), 1)                        ' expect: &c000000 &c000000 &cFFFEFD
GetFolderItem("target.png").Delete
Print GetFolderItem(".").Count                            ' expect: 0

' Text darkens about as much of the picture as it is wide, and nothing beyond.
Dim page As New Picture(100, 30, 32)
page.Graphics.TextSize = 20
Dim wide As Double = page.Graphics.StringWidth("mm")
Print wide > 20, wide < 60, page.Graphics.StringWidth("mmmm") = wide * 2, page.Graphics.StringWidth("")   ' expect: True True True 0
page.Graphics.DrawString("mm", 10, 25)
Dim first As Integer = 100, last As Integer = -1
For x As Integer = 0 To 99
  For y As Integer = 0 To 29
    If page.RGBSurface.Pixel(x, y) = &cFFFFFF Then Continue
    first = Min(first, x)
    last = Max(last, x)
  Next
Next
Print first >= 10, first < 15, last <= 10 + wide, last > wide   ' expect: True True True True
page.Graphics.DrawString("far away", 2147483000, -2147483000)

' What is refused.
Sub Refused(number As Integer)
  Try
    Dim p As Picture
    Select Case number
    Case 1
      p = New Picture(0, 5)
    Case 2
      p = New Picture(5, 32768, 32)
    Case 3
      p = New Picture(5, 5, 7)
    Case 4
      p = New Picture(2, 2)
      p.RGBSurface.Pixel(2, 0) = &c000000
    Case 5
      p = New Picture
      p.Save("none.png")
    Case 6
      p = New Picture(2, 2)
      p.Graphics.DrawPicture(Nil, 0, 0)
    Case 7
      Dim alone As New Graphics
      alone.FillRect(0, 0, 1, 1)
    Case 8
      p = Picture.Open("none.png")
    Case 9
      p = New Picture(2, 2)
      p.Save("no/such/folder.png")
    End Select
    Print "nothing refused"
  Catch e As RuntimeException
    Print e.Message
  End Try
End Sub
Refused(1)   ' expect: a picture is 1 to 32767 pixels wide and high, not 0 x 5
Refused(2)   ' expect: a picture is 1 to 32767 pixels wide and high, not 5 x 32768
Refused(3)   ' expect: a picture has no depth of 7; give 32, or leave the depth out for a picture with alpha
Refused(4)   ' expect: there is no pixel 2, 0 in a picture of 2 x 2; both are counted from 0
Refused(5)   ' expect: the picture has no pixels; make it with New Picture(width, height)
Refused(6)   ' expect: there is no picture to draw; it is Nil
Refused(7)   ' expect: the graphics belong to no picture; ask a picture for its Graphics
Refused(8)   ' expect: cannot open "none.png": No such file or directory; check the path, and that its folder exists
Refused(9)   ' expect: cannot create "no/such/folder.png": No such file or directory; check the path, and that its folder exists
Print GetFolderItem(".").Count                            ' expect: 0

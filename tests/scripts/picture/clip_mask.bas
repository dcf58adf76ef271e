' A track is cut to the dark pixels of a picture, and shows what it is cut to as one: black inside.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print t.TrackClipMask Is Nil, t.Lasterror                ' expect: True 0
t.TrackClipMask = Nil
Print m.IsModified, t.Lasterror                          ' expect: False 0

' Whatever its shape, the region is the same when it is read, written back, saved and read again.
Function Same(a As Picture, b As Picture) As Boolean
  Dim left As RGBSurface = a.RGBSurface, right As RGBSurface = b.RGBSurface
  For y As Integer = 0 To a.Height - 1
    For x As Integer = 0 To a.Width - 1
      If left.Pixel(x, y) <> right.Pixel(x, y) Then Return False
    Next
  Next
  Return a.Width = b.Width And a.Height = b.Height
End Function

' The same numbers at every run.
Dim state As Int64 = 1
Function Chance(least As Integer, most As Integer) As Integer
  state = state * 16807 Mod 2147483647
  Return least + Integer(state Mod (most - least + 1))
End Function

Function Drawn(shape As Integer) As Picture
  Dim p As New Picture(320, 240, 32)
  Dim g As Graphics = p.Graphics
  g.ForeColor = &c000000
  For i As Integer = 1 To 12
    Dim x As Integer = Chance(-20, 320), y As Integer = Chance(-20, 240)
    Dim w As Integer = Chance(1, 150), h As Integer = Chance(1, 90)
    If i Mod 4 = 0 Then g.ForeColor = &cFFFFFF Else g.ForeColor = &c000000
    Select Case shape
    Case 0
      g.FillRect(x, y, w, h)
    Case 1
      g.FillOval(x, y, w, h)
    Case 2
      g.DrawLine(x, y, x + w, y + h)
    Else
      For j As Integer = 0 To h Step 2
        g.FillRect(x + j, y + j, 1, 1)
      Next
    End Select
  Next
  Return p
End Function

' What lies between is rounded to black or white, once.
Function Rounded(p As Picture) As Picture
  Dim result As New Picture(p.Width, p.Height, 32)
  Dim from As RGBSurface = p.RGBSurface, into As RGBSurface = result.RGBSurface
  For y As Integer = 0 To p.Height - 1
    For x As Integer = 0 To p.Width - 1
      Dim c As Color = from.Pixel(x, y)
      If 30 * c.Red + 59 * c.Green + 11 * c.Blue < 12750 Then into.Pixel(x, y) = &c000000
    Next
  Next
  Return result
End Function

Dim agreed As Integer
For shape As Integer = 0 To 3
  For round As Integer = 1 To 3
    Dim p As Picture = Drawn(shape)
    t.TrackClipMask = p
    Dim first As Picture = t.TrackClipMask
    t.TrackClipMask = first
    m.Save
    Dim reopened As Movie = OpenMovie(path)
    If Same(first, Rounded(p)) And Same(reopened.GetVideoTrackKRZ(1).TrackClipMask, first) And t.Lasterror = 0 Then agreed = agreed + 1
    reopened.Close
  Next
Next
Print agreed                                             ' expect: 12
Print t.TrackClipMask.HasAlphaChannel                    ' expect: False

' A mask that is set again changes nothing.
t.TrackClipMask = t.TrackClipMask
Print m.IsModified                                       ' expect: False

' The picture is as large as the track, without fractions, whatever size the mask had.
t.SetTrackDimensions(10.99, 5.5)
Print t.TrackClipMask.Width, t.TrackClipMask.Height      ' expect: 10 5
Dim dot As New Picture(3, 3, 32)
dot.RGBSurface.Pixel(2, 1) = &c000000
t.TrackClipMask = dot
Print t.TrackClipMask.RGBSurface.Pixel(2, 1), t.TrackClipMask.RGBSurface.Pixel(3, 1)   ' expect: &c000000 &cFFFFFF
' Of a track without pixels there is no picture, though it is clipped.
t.SetTrackDimensions(0.99, 100)
Print t.TrackClipMask Is Nil, t.Lasterror                ' expect: True 0
t.SetTrackDimensions(-5, -5)
Print t.TrackClipMask Is Nil, t.Lasterror                ' expect: True 0
t.SetTrackDimensions(10, 10)

' All white is a region without pixels, which is not the same as none.
t.TrackClipMask = New Picture(4, 4, 32)
Print t.TrackClipMask Is Nil, t.TrackClipMask.RGBSurface.Pixel(1, 1)   ' expect: False &cFFFFFF
t.TrackClipMask = Nil
m.Save
Print OpenMovie(path).GetVideoTrackKRZ(1).TrackClipMask Is Nil   ' expect: True

' What has more edges than a region can hold ends the clipping.
t.TrackClipMask = dot
Dim noise As New Picture(400, 400, 32)
Dim pixels As RGBSurface = noise.RGBSurface
For y As Integer = 0 To 399
  For x As Integer = 0 To 399
    If Chance(0, 1) = 1 Then pixels.Pixel(x, y) = &c000000
  Next
Next
t.TrackClipMask = noise
Print t.TrackClipMask Is Nil, t.Lasterror                ' expect: True 0

' A number that is no track.
t.TrackHandle = 12345
Print t.TrackClipMask Is Nil, t.Lasterror                ' expect: True -2009
t.TrackClipMask = dot
Print t.Lasterror                                        ' expect: -2009

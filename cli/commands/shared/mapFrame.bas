' The lower part of a map: where tracks lie in the movie's frame, and which track refers to which.

Class FrameShape
  Owner As MapTrack
  Xs(3) As Double      ' corners in the movie's frame, in order around it
  Ys(3) As Double
  Placing As String    ' how it is turned and cut, "" when it stands as it is stored
  Mask As Picture      ' black where the track shows; Nil when it is not cut
  Sub Constructor(owner As MapTrack)
    Self.Owner = owner
    Dim t As QTTrackKRZ = owner.Track
    Dim isClipped As Boolean = ClipRegion(t.TrackHandle) <> ""
    ' What is larger takes more memory than its map is worth.
    If isClipped And Double(t.Width) * t.Height <= 16777216 Then Mask = t.TrackClipMask
    Dim a, b, u, c, d, v, x, y, w As Integer
    t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
    For i As Integer = 0 To 3
      Dim across As Double = 0, down As Double = 0
      If i = 1 Or i = 2 Then across = t.Width
      If i >= 2 Then down = t.Height
      Xs(i) = (across * a + down * c + x) / 65536
      Ys(i) = (across * b + down * d + y) / 65536
    Next
    If b <> 0 Or c <> 0 Then Placing = ", turned"
    If Double(a) * d < Double(b) * c Then Placing = ", mirrored" + Placing
    If isClipped Then Placing = Placing + ", clipped"
  End Sub
  Function IsUpright() As Boolean
    Return (Xs(0) = Xs(3) And Ys(0) = Ys(1)) Or (Xs(0) = Xs(1) And Ys(0) = Ys(3))
  End Function
  Function Left() As Double
    Return Min(Min(Xs(0), Xs(1)), Min(Xs(2), Xs(3)))
  End Function
  Function Right() As Double
    Return Max(Max(Xs(0), Xs(1)), Max(Xs(2), Xs(3)))
  End Function
  Function Top() As Double
    Return Min(Min(Ys(0), Ys(1)), Min(Ys(2), Ys(3)))
  End Function
  Function Bottom() As Double
    Return Max(Max(Ys(0), Ys(1)), Max(Ys(2), Ys(3)))
  End Function
End Class

Class FramePanel
  Height As Integer
  Private Const kAreaWidth = 400, kAreaHeight = 230, kList = 470, kReferences = 820, kMostLines = 11
  Private shapes() As FrameShape      ' the front one last
  Private references() As String
  Private left As Double, top As Double, scale As Double
  Private c As Canvas
  Private y As Integer

  Sub Constructor(m As Movie, tracks() As MapTrack)
    For Each one As MapTrack In tracks
      If one.Track.Width > 0 And one.Track.Height > 0 Then AddShape(New FrameShape(one))
      Dim number As Integer = 1, type As String, id As Integer
      While references.Count <= kMostLines And TrackReference(one.Track.TrackHandle, number, type, id)
        number = number + 1
        references.Append one.Name + "  →  " + NameOf(tracks, id) + "   " + ConvertEncoding(type, Encodings.UTF8)
      Wend
    Next
    If shapes.Count > 0 Then
      Height = kAreaHeight + 62
    ElseIf references.Count > 0 Then
      Height = 46 + 18 * Min(references.Count, kMostLines)
    End If
  End Sub

  Sub Draw(c As Canvas, y As Integer)
    Self.c = c
    Self.y = y
    If Height > 0 Then c.Line(20, y, 1180, y, &cDDE1E6)
    If shapes.Count > 0 Then DrawFrame
    If references.Count > 0 Then DrawReferences
  End Sub

  ' A lower layer is in front; of one layer, the first track.
  Private Sub AddShape(shape As FrameShape)
    Dim place As Integer = 0
    While place < shapes.Count
      If shapes(place).Owner.Track.Layer <= shape.Owner.Track.Layer Then Exit While
      place = place + 1
    Wend
    shapes.Insert(place, shape)
  End Sub

  Private Function NameOf(tracks() As MapTrack, id As Integer) As String
    For Each one As MapTrack In tracks
      If one.Track.TrackID = id Then Return one.Name
    Next
    Return "no track " + Str(id)
  End Function

  Private Sub DrawFrame()
    c.Text("In the frame", 32, y + 26, 13, &c1F2328, True)
    Dim right As Double, bottom As Double
    left = shapes(0).Left
    right = shapes(0).Right
    top = shapes(0).Top
    bottom = shapes(0).Bottom
    For Each shape As FrameShape In shapes
      left = Min(left, shape.Left)
      right = Max(right, shape.Right)
      top = Min(top, shape.Top)
      bottom = Max(bottom, shape.Bottom)
    Next
    scale = Min(kAreaWidth / Max(right - left, 1), kAreaHeight / Max(bottom - top, 1))
    c.Text(Format(right - left, "0.##") + " × " + Format(bottom - top, "0.##"), 128, y + 26, 11, &c5B636D)
    For Each shape As FrameShape In shapes
      If shape.IsUpright Then Fill(shape)
    Next
    For i As Integer = 0 To shapes.LastIndex
      DrawOutline(shapes(i), i)
    Next
    For i As Integer = shapes.LastIndex DownTo 0
      Dim line As Integer = shapes.LastIndex - i
      If line >= kMostLines Then
        c.Text("and " + Str(i + 1) + " more", kList + 18, y + 48 + line * 20, 11, &c5B636D)
        Exit For
      End If
      Dim t As QTTrackKRZ = shapes(i).Owner.Track
      c.Box(kList, y + 38 + line * 20, 11, 11, shapes(i).Owner.Tint)
      Dim text As String = shapes(i).Owner.Name + "   " + Str(t.Width) + "×" + Str(t.Height) + "  at " + Format(shapes(i).Left, "0.##") + ", " + Format(shapes(i).Top, "0.##") + "  layer " + Str(t.Layer) + shapes(i).Placing
      Dim room As Double = 1150 - kList
      If references.Count > 0 Then room = kReferences - kList - 26
      c.Text(c.Fitted(text, 11, room), kList + 18, y + 48 + line * 20, 11, &c1F2328)
    Next
  End Sub

  Private Function Across(x As Double) As Double
    Return 32 + (x - left) * scale
  End Function
  Private Function Down(y As Double) As Double
    Return Self.y + 40 + (y - top) * scale
  End Function

  ' What the track shows: all of it, or what its mask leaves. Rows of the mask that are alike are one.
  Private Sub Fill(shape As FrameShape)
    If shape.Mask Is Nil Then
      FillPart(shape, 0, 0, 1, 1)
      Return
    End If
    Dim columns As Integer = Min(shape.Mask.Width, 128)
    Dim rows As Integer = Min(shape.Mask.Height, 120)
    Dim before As String
    Dim first As Integer
    For row As Integer = 0 To rows
      Dim here As String
      If row < rows Then here = ShownIn(shape.Mask, (row * 2 + 1) * shape.Mask.Height \ (rows * 2), columns)
      If row > 0 And here = before And row < rows Then Continue
      For Each run As String In Split(before, ";")
        If run <> "" Then FillPart(shape, Val(NthField(run, "-", 1)) / columns, first / rows, Val(NthField(run, "-", 2)) / columns, row / rows)
      Next
      before = here
      first = row
    Next
  End Sub

  ' The runs of columns that a row of the mask leaves, "3-7;9-12;".
  Private Function ShownIn(mask As Picture, y As Integer, columns As Integer) As String
    Dim surface As RGBSurface = mask.RGBSurface
    Dim runs As String
    Dim begin As Integer = -1
    For i As Integer = 0 To columns
      Dim shown As Boolean = False
      If i < columns Then shown = surface.Pixel((i * 2 + 1) * mask.Width \ (columns * 2), y) = &c000000
      If shown And begin < 0 Then begin = i
      If Not shown And begin >= 0 Then
        runs = runs + Str(begin) + "-" + Str(i) + ";"
        begin = -1
      End If
    Next
    Return runs
  End Function

  ' Fills a part of the track, given from 0 to 1 across and down as it is stored.
  Private Sub FillPart(shape As FrameShape, x1 As Double, y1 As Double, x2 As Double, y2 As Double)
    Dim alongX As Double = shape.Xs(1) - shape.Xs(0), alongY As Double = shape.Ys(1) - shape.Ys(0)
    Dim downX As Double = shape.Xs(3) - shape.Xs(0), downY As Double = shape.Ys(3) - shape.Ys(0)
    Dim ax As Double = Across(shape.Xs(0) + alongX * x1 + downX * y1), bx As Double = Across(shape.Xs(0) + alongX * x2 + downX * y2)
    Dim ay As Double = Down(shape.Ys(0) + alongY * x1 + downY * y1), by As Double = Down(shape.Ys(0) + alongY * x2 + downY * y2)
    c.Box(Min(ax, bx), Min(ay, by), Abs(bx - ax), Abs(by - ay), Mixed(shape.Owner.Tint, &cFFFFFF, 0.16), shape.Owner.Name)
  End Sub

  ' Outlines lie over all that is filled, so that what another track hides is seen, too.
  Private Sub DrawOutline(shape As FrameShape, index As Integer)
    Dim tint As Color = shape.Owner.Tint
    For i As Integer = 0 To 3
      Dim k As Integer = (i + 1) Mod 4
      c.Line(Across(shape.Xs(i)), Down(shape.Ys(i)), Across(shape.Xs(k)), Down(shape.Ys(k)), tint, 1.5)
    Next
    ' The corner that a picture begins with.
    c.Box(Across(shape.Xs(0)) - 3, Down(shape.Ys(0)) - 3, 6, 6, tint)
    ' Numbers of tracks that begin at one place stand side by side.
    Dim before As Integer
    For i As Integer = 0 To index - 1
      If shapes(i).Left = shape.Left And shapes(i).Top = shape.Top Then before = before + 1
    Next
    Dim number As String = NthField(shape.Owner.Name, " ", 1)
    If shape.IsUpright Then
      c.Text(number, Across(shape.Left) + 10 + before * 18, Down(shape.Top) + 18, 13, tint, True)
    Else
      c.Text(number, Across((shape.Xs(0) + shape.Xs(2)) / 2), Down((shape.Ys(0) + shape.Ys(2)) / 2) + 5, 13, tint, True, "middle")
    End If
  End Sub

  Private Sub DrawReferences()
    Dim x As Integer = kReferences
    If shapes.Count = 0 Then x = 32
    c.Text("References", x, y + 26, 13, &c1F2328, True)
    For i As Integer = 0 To references.LastIndex
      If i = kMostLines Then
        c.Text("and more", x, y + 48 + i * 18, 11, &c5B636D)
        Exit For
      End If
      c.Text(c.Fitted(references(i), 11, 1168 - x), x, y + 48 + i * 18, 11, &c1F2328)
    Next
  End Sub
End Class

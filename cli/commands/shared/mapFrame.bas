' The lower part of a map: where tracks lie in the movie's frame, and which track refers to which.

Class FrameShape
  Owner As MapTrack
  Xs(3) As Double      ' corners in the movie's frame, in order around it
  Ys(3) As Double
  Placing As String    ' how it is turned, "" when it stands as it is stored
  Sub Constructor(owner As MapTrack)
    Self.Owner = owner
    Dim a, b, u, c, d, v, x, y, w As Integer
    owner.Track.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
    For i As Integer = 0 To 3
      Dim across As Double = 0, down As Double = 0
      If i = 1 Or i = 2 Then across = owner.Track.Width
      If i >= 2 Then down = owner.Track.Height
      Xs(i) = (across * a + down * c + x) / 65536
      Ys(i) = (across * b + down * d + y) / 65536
    Next
    If b <> 0 Or c <> 0 Then Placing = ", turned"
    If Double(a) * d < Double(b) * c Then Placing = ", mirrored" + Placing
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
      If shape.IsUpright Then c.Box(Across(shape.Left), Down(shape.Top), (shape.Right - shape.Left) * scale, (shape.Bottom - shape.Top) * scale, Mixed(shape.Owner.Tint, &cFFFFFF, 0.16), shape.Owner.Name)
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

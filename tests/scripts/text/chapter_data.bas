' A chapter starts centred and clipped to its box; every property keeps what it is given.
Dim c As New QTChapterDataKRZ
Print "[" + c.Text + "]", c.TextJustification, c.DisplayFlags, c.ScrollDelay   ' expect: [] 1 4 0
Print c.FrameDuration, c.FontNumber, c.FontSize, c.HighLightStart, c.HighLightEnd   ' expect: 0 0 0 0 0
Print c.Left, c.Top, c.Width, c.Height                       ' expect: 0 0 0 0
Print c.bold, c.HasBackColor, c.TextColor                    ' expect: False False &c000000

c.Text = "Première" : c.Text = c.Text + " partie" : c.FrameDuration = 600 : c.FontNumber = -1
c.FontSize = 12 : c.italic = True : c.shadow = True : c.HasTextColor = True : c.HasHighLightColor = True
c.HighLightColor = &c112233 : c.BackColor = &cFFFFFF : c.TextColor = &c0A0B0C
c.TextJustification = QTChapterDataKRZ.teRight
c.DisplayFlags = QTChapterDataKRZ.dfScrollIn + QTChapterDataKRZ.dfInverseHilite : c.ScrollDelay = 30
c.HighLightStart = 1 : c.HighLightEnd = 5 : c.Left = 1 : c.Top = 2 : c.Width = 300 : c.Height = -4
Print c.Text, c.FrameDuration, c.FontNumber, c.FontSize      ' expect: Première partie 600 -1 12
Print c.bold, c.italic, c.underline, c.outline, c.shadow, c.condense, c.extend   ' expect: False True False False True False False
Print c.HasBackColor, c.HasTextColor, c.HasHighLightColor    ' expect: False True True
Print c.HighLightColor, c.BackColor, c.TextColor             ' expect: &c112233 &cFFFFFF &c0A0B0C
Print c.TextJustification, c.DisplayFlags, c.ScrollDelay, c.HighLightStart, c.HighLightEnd   ' expect: -1 32800 30 1 5
Print c.Left, c.Top, c.Width, c.Height                       ' expect: 1 2 300 -4

' Two chapters share nothing but their text's bytes.
Dim other As New QTChapterDataKRZ
other.Text = c.Text
c.Text = "changed"
c = Nil
Print other.Text, other.FrameDuration                        ' expect: Première partie 0

' Constants are reached through the class and through an object.
Print QTChapterDataKRZ.dfDontDisplay, QTChapterDataKRZ.dfTextColorHilite, QTChapterDataKRZ.teLeft, QTChapterDataKRZ.teDefault, QTChapterDataKRZ.teCenter   ' expect: 1 65536 -2 0 1
Print other.dfClipToTextBox                                  ' expect: 4

' Every way of drawing and every place of a line is a number of its own.
Dim flags As Integer = QTChapterDataKRZ.dfDontDisplay + QTChapterDataKRZ.dfDontAutoScale + QTChapterDataKRZ.dfClipToTextBox + QTChapterDataKRZ.dfUseMovieBGColor
flags = flags + QTChapterDataKRZ.dfShrinkTextBoxToFit + QTChapterDataKRZ.dfScrollIn + QTChapterDataKRZ.dfScrollOut + QTChapterDataKRZ.dfHorizScroll
flags = flags + QTChapterDataKRZ.dfReverseScroll + QTChapterDataKRZ.dfContinuousScroll + QTChapterDataKRZ.dfFlowHoriz + QTChapterDataKRZ.dfContinuousKaraoke
flags = flags + QTChapterDataKRZ.dfDropShadow + QTChapterDataKRZ.dfAntiAlias + QTChapterDataKRZ.dfKeyedText + QTChapterDataKRZ.dfInverseHilite + QTChapterDataKRZ.dfTextColorHilite
Print flags, QTChapterDataKRZ.teCenter, QTChapterDataKRZ.teDefault, QTChapterDataKRZ.teRight, QTChapterDataKRZ.teLeft   ' expect: 131071 1 0 -1 -2

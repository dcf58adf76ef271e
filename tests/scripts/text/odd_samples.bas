' Text samples that other tools write, and damaged ones.
Dim m As Movie = OpenMovie(TestMovie("odd-text"))
Dim t As QTChapterTrackKRZ = m.ChapterTrackKRZ
Print t.ChapterCount                                           ' expect: 11
For i As Integer = 0 To 10
  Dim text As String = t.ChapterText(i * 60)
  Print i, LenB(text), t.Lasterror, "[" + SampleText(t.TrackHandle, i * 60) + "]", SampleEncoding(t.TrackHandle, i * 60)
Next
' expect: 0 2 0 [Hi] UTF-16
' expect: 1 6 0 [Hi] UTF-16
' expect: 2 5 0 [Hi] UTF-8
' expect: 3 3 0 [éx] UTF-8
' expect: 4 2 0 [éx] MacRoman
' expect: 5 0 0 [] UTF-8
' expect: 6 0 0 [short] UTF-8
' expect: 7 2 0 [Hi] UTF-8
' expect: 8 2 0 [Hi] UTF-8
' expect: 9 0 0 [] UTF-8
' expect: 10 3 0 [�] UTF-16
Print "[" + SampleText(t.TrackHandle, 5000) + SampleText(0, 0) + SampleText(-1, 0) + "]"   ' expect: []

' All at once.
Dim times() As Integer
Dim texts() As String = TrackTexts(t.TrackHandle, times)
Print Join(texts, "|"), times.Count                             ' expect: Hi|Hi|Hi|éx|éx||short|Hi|Hi||� 12
Print times(0), times(1), times(10), times(11)                  ' expect: 0 60 600 660
Print TrackTexts(t.TrackHandle, times).Count, times.Count       ' expect: 11 12
Print TrackTexts(0, times).Count, times.Count                   ' expect: 0 0

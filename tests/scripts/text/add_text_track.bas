' Chapters from an array become a text track below the pictures, and stay what they are in the saved file.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Print m.HasQTChapterTrackKRZ, m.ChapterTrackKRZ Is Nil        ' expect: False True

Dim titles() As String = Array("Opening", "Première partie", "第二章", "الفصل الثالث", "Κεφάλαιο 🎬👩‍🚀", "")
Dim list() As QTChapterDataKRZ
For Each title As String In titles
  Dim c As New QTChapterDataKRZ
  c.Text = title
  c.FrameDuration = 600
  list.Append c
Next
list(5).FrameDuration = 3000
Dim t As QTChapterTrackKRZ = m.AddTextTrackKRZ(list, "vide", True)
Print t.Lasterror, t.TrackEnabled, t.Width, t.Height, t.TrackVolume, t.MediaType   ' expect: 0 True 320 20 0 text
Print t.IsChapterTrack, t.HasChapterTrack, m.HasQTChapterTrackKRZ   ' expect: True False True
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print video.HasChapterTrack, video.ChapterTrack.TrackID = t.TrackID, video.IsChapterTrack   ' expect: True True False
Dim a, b, u, c, d, v, x, y, w As Integer
t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
Print a, d, x \ 65536, y \ 65536                              ' expect: 65536 65536 0 240
m.Save

Sub Show(t As QTChapterTrackKRZ)
  Dim time As Integer = t.GetFirstChapterTime
  While time >= 0
    Print time, "[" + t.ChapterText(time) + "]", t.Lasterror
    time = t.GetNextChapterTime(time)
  Wend
  Print t.ChapterCount, t.Duration, t.MediaSampleDescriptionCount
End Sub
For Each one As Movie In Array(m, OpenMovie(path))
  Show one.ChapterTrackKRZ
  ' expect: 0 [Opening] 0
  ' expect: 600 [Première partie] 0
  ' expect: 1200 [第二章] 0
  ' expect: 1800 [الفصل الثالث] 0
  ' expect: 2400 [Κεφάλαιο 🎬👩‍🚀] 0
  ' expect: 3000 [] 0
  ' expect: 6 6000 1
Next
' expect: 0 [Opening] 0
' expect: 600 [Première partie] 0
' expect: 1200 [第二章] 0
' expect: 1800 [الفصل الثالث] 0
' expect: 2400 [Κεφάλαιο 🎬👩‍🚀] 0
' expect: 3000 [] 0
' expect: 6 6000 1

' The end of a text track, and times that are in no chapter.
Print t.GetChapterTime(1), t.GetChapterTime(6), t.GetChapterTime(7), t.GetChapterTime(0), t.GetNextChapterTime(3000)   ' expect: 0 3000 -1 -1 -1
Print "[" + t.ChapterText(599) + "]", "[" + t.ChapterText(6000) + "]", t.Lasterror   ' expect: [Opening] [] -2032
Print "[" + t.ChapterText(-1) + "]", t.Lasterror              ' expect: [] -2032

' Without a track of the type nothing is made; without chapters an empty track is, and it is linked.
Dim before As Integer = m.TrackCountKRZ
Print m.AddTextTrackKRZ(list, "tmcd", True) Is Nil, m.TrackCountKRZ = before   ' expect: True True
Dim none() As QTChapterDataKRZ
Dim empty As QTChapterTrackKRZ = m.AddTextTrackKRZ(none, "soun", True)
Print empty.Duration, empty.ChapterCount, empty.IsChapterTrack, m.GetSoundTrackKRZ(1).ChapterTrack.TrackID = empty.TrackID   ' expect: 0 0 True True
' A plain text track is not linked, and an element that is Nil is left out.
list(1) = Nil
Dim plain As QTChapterTrackKRZ = m.AddTextTrackKRZ(list, "vide", False)
Print plain.IsChapterTrack, plain.ChapterCount, plain.ChapterText(600)   ' expect: False 5 第二章
Print m.GetTextTrackKRZ(3).TrackID = plain.TrackID, m.GetTextTrackKRZ(4) Is Nil   ' expect: True True

' Durations are in movie units and become those of the media of the track that the text belongs to.
Dim m As Movie = OpenMovie(TestMovie("ntsc"), True)
Dim list() As QTChapterDataKRZ
For i As Integer = 1 To 3
  Dim c As New QTChapterDataKRZ
  c.Text = Str(i)
  c.FrameDuration = 20
  list.Append c
Next
Dim t As QTChapterTrackKRZ = m.AddTextTrackKRZ(list, "vide", True)
Print m.TimeScale, MediaTimeScale(t.TrackHandle)             ' expect: 600 30000
Dim data As MemoryBlock, description As MemoryBlock
Dim time, duration, index, count, flags As Integer
Print t.GetMediaSample(data, time, duration, description, index, 1, count, flags), duration, t.Duration   ' expect: True 1000 60
' A time is rounded so that it leads back to its own text.
Dim audio As Movie = OpenMovie(TestMovie("two-tracks"), True)
Dim odd As QTChapterTrackKRZ = audio.AddTextTrackKRZ(list, "soun", True)
Print MediaTimeScale(odd.TrackHandle), odd.GetChapterTime(2), odd.ChapterText(20), odd.ChapterText(19)   ' expect: 44100 20 2 1

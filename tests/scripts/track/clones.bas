' A clone has its own edits and properties and shares the samples of its original.
Dim path As String = TestMovie("edited")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
t.Layer = 4
Dim clone As QTTrackKRZ = t.AddClonedTrackToMovie(m, 1)
Print t.Lasterror, clone.Lasterror, m.TrackCountKRZ                              ' expect: 0 0 2
Print clone.TrackID, clone.Layer, clone.Duration, clone.MediaSampleCount, clone.Movie Is m   ' expect: 2 4 5100 100 True
clone.DeleteTrackSegment(0, 5000)
Dim bare As QTTrackKRZ = t.AddClonedTrackToMovie(m, 3)
Print t.Duration, clone.Duration, bare.Duration                                  ' expect: 5100 100 0
m.Save
Dim saved As Movie = OpenMovie(path)
For i As Integer = 1 To saved.TrackCountKRZ
  Dim s As QTTrackKRZ = saved.GetTrackIndexKRZ(i)
  Print s.TrackID, s.Layer, s.Duration, s.MediaSampleCount, SampleDigest(s.TrackHandle) = SampleDigest(t.TrackHandle)
  ' expect: 1 4 5100 100 True
  ' expect: 2 4 100 100 True
  ' expect: 3 4 0 100 True
Next
Print MovieProblems(saved) = ""                                                  ' expect: True

Print t.AddClonedTrackToMovie(Nil, 1) Is Nil, t.Lasterror                        ' expect: True -1
Dim none As New QTTrackKRZ
Print none.AddClonedTrackToMovie(m, 1) Is Nil, none.Lasterror                    ' expect: True -1

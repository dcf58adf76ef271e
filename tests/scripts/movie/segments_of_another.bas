' Segments of one movie go into another: into its tracks, or into tracks made for them.
Dim source As Movie = OpenMovie(TestMovie("chapters"))
Dim path As String = TestMovie("two-tracks") + ".joined.mov"
GetFolderItem(TestMovie("two-tracks")).CopyTo(GetFolderItem(path))
Dim m As Movie = OpenMovie(path, True)
m.CopiesSamples = True
Print m.CopiesSamples, source.CopiesSamples                          ' expect: True False
Print source.InsertMovieSegmentKRZ(m, 600, 1800, 1200)               ' expect: 0
Print m.TrackCountKRZ, m.Duration                                    ' expect: 3 7800
For i As Integer = 1 To 3
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
  Print t.MediaType, t.Duration, t.TimeOffset, t.MediaSampleCount, t.TrackEnabled
Next
' expect: vide 7800 0 130 True
' expect: soun 7800 0 441000 True
' expect: text 3000 1200 2 False
Dim before As Movie = OpenMovie(TestMovie("two-tracks"))
Print SampleDigest(m.GetVideoTrackKRZ(1).TrackHandle, 100) = SampleDigest(before.GetVideoTrackKRZ(1).TrackHandle)   ' expect: True

Print source.InsertMovieSegmentKRZ(m, 6001, 1, 0), source.InsertMovieSegmentKRZ(m, 0, -1, 0), source.InsertMovieSegmentKRZ(Nil, 0, 1, 0)   ' expect: -2015 -2014 -1
Print Left(MovieFailure, 26)                                         ' expect: a duration cannot be -1
Print m.TrackCountKRZ, m.Duration                                    ' expect: 3 7800

m.Save
m.Close
m = OpenMovie(path)
Print m.Duration, "[" + MovieProblems(m) + "]"                       ' expect: 7800 []
m.Close
Try
  m.CopiesSamples = True
Catch e As IOException
  Print e.ErrorNumber                                                ' expect: -2010
End Try
GetFolderItem(path).Delete

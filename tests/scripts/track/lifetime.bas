' A track keeps its movie open until it goes away itself.
Dim before As Integer = LiveReferences
Dim t As QTTrackKRZ = OpenMovie(TestMovie("two-tracks")).GetSoundTrackKRZ(1)
Print t.MediaType, t.MediaSampleCount                ' expect: soun 441000
Print LiveReferences > before                        ' expect: True
Dim second As QTTrackKRZ = t.Movie.GetTrackIDKRZ(1)
t = Nil
Print second.MediaType, LiveReferences > before      ' expect: vide True
second = Nil
Print LiveReferences = before                        ' expect: True

' A track that a script takes the movie from lets it go at once.
t = OpenMovie(TestMovie("two-tracks")).GetVideoTrackKRZ(1)
Print t.Duration                                     ' expect: 6000
t.Movie = Nil
Print t.Movie Is Nil, t.Duration, LiveReferences = before   ' expect: True 0 True
t = Nil

' A movie that a script gives it is let go with it.
t = New QTTrackKRZ
t.Movie = OpenMovie(TestMovie("two-tracks"))
Print t.Movie.TrackCountKRZ, t.Duration              ' expect: 2 0
t.TrackHandle = t.Movie.GetVideoTrackKRZ(1).TrackHandle
Print t.Duration                                     ' expect: 6000
t.Movie = OpenMovie(TestMovie("edited"))
Print t.Movie.Duration, t.Duration                   ' expect: 5100 0
t = Nil
Print LiveReferences = before                        ' expect: True

' Many tracks that nobody keeps.
Dim m As Movie = OpenMovie(TestMovie("lookup"))
Dim sum As Integer
For round As Integer = 1 To 200
  For i As Integer = 1 To m.TrackCountKRZ
    sum = sum + m.GetTrackIndexKRZ(i).TrackID
  Next
Next
Print sum                                            ' expect: 417400

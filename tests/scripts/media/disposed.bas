' A track whose media is disposed of stays, and shows nothing.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
t.DisposeTrackMedia
' Even success leaves the error code as it was set first.
Print t.Lasterror, t.Duration, t.MediaSampleCount, t.MediaHandle   ' expect: -1 0 0 0
m.Save
Dim saved As Movie = OpenMovie(path)
Print saved.TrackCountKRZ, saved.GetTrackIndexKRZ(2).Duration, saved.GetSoundTrackKRZ(1) Is Nil   ' expect: 2 0 True
Print saved.GetVideoTrackKRZ(1).MediaSampleCount   ' expect: 100
Dim none As New QTTrackKRZ
none.DisposeTrackMedia
Print none.Lasterror   ' expect: -1

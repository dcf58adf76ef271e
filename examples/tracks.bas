' Lists the tracks of a movie: krz run examples/tracks.bas clip.mov
Dim m As Movie = OpenMovie(Args(0))
Print m.TrackCountKRZ, "tracks"
For i As Integer = 1 To m.TrackCountKRZ
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
  Print t.TrackID, t.MediaType, t.Width, t.Height, t.MediaSampleCount
Next

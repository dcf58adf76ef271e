' Durations and offsets are in the movie's time scale and follow the edits.
Dim both As Movie = OpenMovie(TestMovie("two-tracks"))
Print both.TimeScale, both.GetVideoTrackKRZ(1).Duration, both.GetSoundTrackKRZ(1).Duration   ' expect: 600 6000 6000
Print both.GetVideoTrackKRZ(1).TimeOffset           ' expect: 0

Dim edited As QTTrackKRZ = OpenMovie(TestMovie("edited")).GetVideoTrackKRZ(1)
Print edited.Duration, edited.TimeOffset            ' expect: 5100 300

Dim rates As QTTrackKRZ = OpenMovie(TestMovie("rates")).GetVideoTrackKRZ(1)
Print rates.Duration, rates.TimeOffset              ' expect: 850 0

Print OpenMovie(TestMovie("silent")).GetSoundTrackKRZ(1).Duration   ' expect: 0

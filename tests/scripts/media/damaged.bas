' Damage in one table is an error of what needs it and of nothing else.
Dim m As Movie = OpenMovie(TestMovie("damaged"))
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print t.MediaType, t.Duration, t.Width, t.MediaSampleDescriptionCount, t.FileCount   ' expect: vide 600 16 1 1
Print t.MediaSampleDescriptionRaw(1) Is Nil, t.Lasterror      ' expect: False 0
Print t.MediaSampleCount                                      ' expect: 0
Dim time As Integer = 5, duration As Integer = 6
Print t.NextInterestingTimeKRZ(time, duration), time, duration, t.Lasterror      ' expect: True -1 0 -2011
time = 5
Print t.NextInterestingTimeKRZ(time, duration, -1), time, duration, t.Lasterror  ' expect: True -1 0 -2011

' A track without media is a track all the same.
Print m.TrackCountKRZ                                         ' expect: 2
t = m.GetTrackIDKRZ(2)
t.Lasterror = 55
Print t.TrackID, t.Layer, t.TrackEnabled, t.Duration          ' expect: 2 -7 True 0
Print "[" + t.MediaType + "]", t.MediaHandle, t.MediaHandlerHandle   ' expect: [] 0 0
Print t.MediaSampleCount, t.MediaSampleDescriptionCount, t.FileCount, t.Lasterror   ' expect: 0 0 0 55
Print t.MediaSampleDescriptionRaw(1) Is Nil, t.Lasterror      ' expect: True -1
time = 5
Print t.NextInterestingTimeKRZ(time, duration), time, duration, t.Lasterror      ' expect: True -1 0 0
Print m.GetVideoTrackKRZ(2) Is Nil                            ' expect: True

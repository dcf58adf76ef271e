' What lies beyond the largest Integer is cut or not found; a walk ends all the same.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("long")).GetVideoTrackKRZ(1)
Print t.Duration, t.TimeOffset, t.MediaSampleCount   ' expect: 2147483647 0 4
Dim time, duration As Integer
Print t.NextInterestingTimeKRZ(time, duration), time, duration   ' expect: True 0 1073741824
time = 1
Print t.NextInterestingTimeKRZ(time, duration), time, duration   ' expect: True 1073741824 1073741824
Print t.NextInterestingTimeKRZ(time, duration, 1), time, duration, t.Lasterror   ' expect: True -1 0 0
time = 2147483647
Print t.NextInterestingTimeKRZ(time, duration), time, duration   ' expect: True -1 0
time = 2147483647
Print t.NextInterestingTimeKRZ(time, duration, -1), time, duration   ' expect: True 1073741824 1073741824

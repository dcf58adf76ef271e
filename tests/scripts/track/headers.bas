' What the header of a track says reaches the script unchanged, negative and beyond 2^31 too.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("headers")).GetVideoTrackKRZ(1)
Print t.Lasterror                          ' expect: 0
Print t.TrackVolume                        ' expect: -384
Print t.Width, t.Height                    ' expect: 640 -1
Print t.Layer                              ' expect: -3
Print t.TrackCreationTime                  ' expect: -536870912
Print t.TrackModificationTime              ' expect: -1
Print t.TrackID, t.TrackEnabled            ' expect: 1 True

' Only the volume touches the error, and always with 0.
t.Lasterror = 55
Print t.TrackVolume, t.Lasterror           ' expect: -384 0
t.Lasterror = 55
Dim all As Integer = t.Width + t.Height + t.Layer + t.TrackID + t.TrackCreationTime + t.Duration + t.TimeOffset
If t.TrackEnabled Then Print t.Lasterror   ' expect: 55

Dim a, b, c, d, e, f, g, h, i As Integer
t.GetTrackRawMatrix(a, b, c, d, e, f, g, h, i)
Print a, b, c                              ' expect: 32768 1 -2
Print d, e, f                              ' expect: -65536 0 3
Print g, h, i                              ' expect: 6553600 -1310720 1073741824
Print t.Lasterror                          ' expect: 0

' Of dates beyond 32 bits the low half is shown.
Dim s As QTTrackKRZ = OpenMovie(TestMovie("old-headers")).GetSoundTrackKRZ(1)
Print s.TrackCreationTime, s.TrackModificationTime   ' expect: 5 -2147483648
Print s.TrackVolume, s.Layer               ' expect: 384 32767
Print s.Width, s.Height                    ' expect: 0 0

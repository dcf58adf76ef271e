' A track that a script makes itself has no track behind it: every row answers with nothing.
Dim t As New QTTrackKRZ
Print t.Movie Is Nil, t.TrackHandle, t.Lasterror     ' expect: True 0 0
t.Lasterror = 55
Print t.MediaSampleCount, t.Duration, t.TimeOffset, t.Layer          ' expect: 0 0 0 0
Print t.TrackCreationTime, t.TrackModificationTime, t.TrackEnabled   ' expect: 0 0 False
Print t.TrackID, t.Width, t.Height                                   ' expect: 0 0 0
Print "[" + t.MediaType + "]"                                        ' expect: []
Print t.MediaHandlerHandle, t.MediaHandle, t.FileCount, t.MediaSampleDescriptionCount   ' expect: 0 0 0 0
Print t.Lasterror                                                    ' expect: 55
Print t.TrackVolume, t.Lasterror                                     ' expect: 0 0

Print t.MediaSampleDescriptionRaw(1) Is Nil, t.Lasterror             ' expect: True -1
t.Lasterror = 55
Dim time As Integer = 12, duration As Integer = 34
Print t.NextInterestingTimeKRZ(time, duration), time, duration, t.Lasterror   ' expect: False 12 34 -1
t.Lasterror = 55
Print t.NextInterestingTimeKRZ(time, duration, -1.0), time, duration, t.Lasterror   ' expect: False 12 34 -1
t.Lasterror = 55
Dim a As Integer = 1, b As Integer = 2, c As Integer = 3, d As Integer = 4, e As Integer = 5
Dim f As Integer = 6, g As Integer = 7, h As Integer = 8, i As Integer = 9
t.GetTrackRawMatrix(a, b, c, d, e, f, g, h, i)
Print a, b, c, d, e, f, g, h, i, t.Lasterror         ' expect: 0 0 0 0 0 0 0 0 0 -1

' The subclass is a track as well.
Dim chapter As New QTChapterTrackKRZ
Print chapter.Duration, chapter.TrackHandle, chapter IsA QTTrackKRZ   ' expect: 0 0 True
Print chapter.NextInterestingTimeKRZ(time, duration), chapter.Lasterror   ' expect: False -1

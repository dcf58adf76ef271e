' Text tracks go by number or all together, and the references to them with them.
Dim path As String = TestMovie("chapters")
Dim m As Movie = OpenMovie(path, True)
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim list() As QTChapterDataKRZ
Print m.AddTextTrackKRZ(list, "vide", True).TrackID, m.AddTextTrackKRZ(list, "vide", True).TrackID   ' expect: 3 4
Print m.RemoveTextTrackKRZ(4), m.RemoveTextTrackKRZ(-1)        ' expect: -2028 -2028
' Only 16 bits of the number count.
Print m.RemoveTextTrackKRZ(65536 + 2), m.TrackCountKRZ, video.ChapterTrack.TrackID   ' expect: 0 3 2
Print m.RemoveTextTrackKRZ(1), video.ChapterTrack.TrackID      ' expect: 0 4
Print m.RemoveTextTrackKRZ(65536), m.TrackCountKRZ, video.HasChapterTrack   ' expect: 0 1 False
Print m.RemoveTextTrackKRZ(0)                                  ' expect: -2028
m.Save
Dim saved As Movie = OpenMovie(path)
Print saved.TrackCountKRZ, saved.HasQTChapterTrackKRZ          ' expect: 1 False
m.Close
Print m.RemoveTextTrackKRZ(1), m.AddTextTrackKRZ(list, "vide", True) Is Nil, m.HasQTChapterTrackKRZ, m.ChapterTrackKRZ Is Nil   ' expect: -1 True False True

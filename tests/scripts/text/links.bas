' Which track has chapters: only enabled tracks speak for the movie, while all speak for the text track.
Dim m As Movie = OpenMovie(TestMovie("chapters"), True)
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim text As QTChapterTrackKRZ = m.GetTextTrackKRZ(1)
Print text.TrackEnabled, m.GetTextTrackKRZ(1, True) Is Nil     ' expect: False True
Print m.HasQTChapterTrackKRZ, m.ChapterTrackKRZ.TrackID = text.TrackID, text.IsChapterTrack   ' expect: True True True
video.TrackEnabled = False
Print m.HasQTChapterTrackKRZ, m.ChapterTrackKRZ Is Nil, text.IsChapterTrack, video.HasChapterTrack   ' expect: False True True True
' The link is set and taken away on the first enabled track of a type, and there is none now.
text.SetTextTrackAsChapterTrack("vide", False)
Print text.Lasterror, video.HasChapterTrack                    ' expect: -50 True
video.TrackEnabled = True
text.SetTextTrackAsChapterTrack("vide", False)
Print text.Lasterror, video.HasChapterTrack, text.IsChapterTrack   ' expect: 0 False False
text.SetTextTrackAsChapterTrack("vide", False)
Print text.Lasterror                                           ' expect: -2028
text.SetTextTrackAsChapterTrack("soun", True)
Print text.Lasterror                                           ' expect: -50
text.SetTextTrackAsChapterTrack("vide", True)
text.SetTextTrackAsChapterTrack("vide", True)
Print text.Lasterror, video.ChapterTrack.ChapterText(0) <> ""  ' expect: 0 True
video.DeleteTrackReference("chap", 1)
Print video.HasChapterTrack                                    ' expect: True

' Tracks that name each other, themselves, or nobody.
Dim c As Movie = OpenMovie(TestMovie("circles"), True)
Dim a As QTTrackKRZ = c.GetVideoTrackKRZ(1)
Dim b As QTChapterTrackKRZ = c.GetTextTrackKRZ(1)
Print a.IsChapterTrack, b.IsChapterTrack, a.ChapterTrack.TrackID, b.ChapterTrack.TrackID   ' expect: True True 2 2
Print c.RemoveTextTrackKRZ(0), a.HasChapterTrack, a.IsChapterTrack   ' expect: 0 False False

' A track of its own making has no track behind it.
Dim none As New QTChapterTrackKRZ
Print none.ChapterCount, none.GetChapterTime(1), none.HasChapterTrack, none.IsChapterTrack, none.ChapterTrack Is Nil   ' expect: 0 0 False False True
none.Lasterror = 7
Print none.GetFirstChapterTime, none.GetNextChapterTime(5), none.Lasterror   ' expect: 0 0 -1
none.SetTextTrackAsChapterTrack("vide", True)
Print none.Lasterror                                           ' expect: -1
Print "[" + none.ChapterText(0) + "]", none.Lasterror          ' expect: [] -2008

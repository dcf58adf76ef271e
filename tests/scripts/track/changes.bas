' Properties of a track are set, saved and read back.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim sound As QTTrackKRZ = m.GetSoundTrackKRZ(1)
Dim created As Integer = video.TrackCreationTime
Print m.IsModified                                            ' expect: False
sound.TrackVolume = 65536 + 128
Print sound.TrackVolume, sound.Lasterror, m.IsModified        ' expect: 128 0 True
video.TrackEnabled = False
video.SetTrackDimensions(10.99999, 20.5)
Print video.Width, video.Height, video.Lasterror              ' expect: 10 20 0
' Assigning to the sizes sets the volume.
video.Width = 100 : video.Height = -65
Print video.Width, video.Height, video.TrackVolume            ' expect: 10 20 -65
video.Layer = 65536 - 5 : video.TimeOffset = 300
Print video.Layer, video.TimeOffset, video.Duration, m.Duration   ' expect: -5 300 6300 6300
m.Save
Print m.IsModified                                            ' expect: False

Sub Show(t As QTTrackKRZ)
  Print t.TrackID, t.TrackEnabled, t.TrackVolume, t.Width, t.Height, t.Layer, t.TimeOffset, t.Duration
End Sub
For Each t As Movie In Array(m, OpenMovie(path))
  Show t.GetVideoTrackKRZ(1)
  Show t.GetSoundTrackKRZ(1)
  ' expect: 1 False -65 10 20 -5 300 6300
  ' expect: 2 True 128 0 0 0 0 6000
  ' expect: 1 False -65 10 20 -5 300 6300
  ' expect: 2 True 128 0 0 0 0 6000
Next
Dim again As QTTrackKRZ = OpenMovie(path).GetVideoTrackKRZ(1)
Print again.TrackCreationTime = created, again.TrackModificationTime = created   ' expect: True False

' The offset is the empty time in front, whatever it was.
video.TimeOffset = 5
Print video.TimeOffset, video.Duration                        ' expect: 5 6005
video.TimeOffset = 0
Print video.TimeOffset, video.Duration                        ' expect: 0 6000
video.TimeOffset = -1
Print video.TimeOffset, video.Duration                        ' expect: 0 6000

' Without a track, nothing happens.
Dim none As New QTTrackKRZ
none.TrackVolume = 5
Print none.Lasterror                                          ' expect: -1
none.Lasterror = 7
Print none.TrackVolume, none.Lasterror                        ' expect: 0 0
none.TrackEnabled = True : none.Layer = 5 : none.TimeOffset = 5
none.SetTrackDimensions(1, 1)
Print none.TrackEnabled, none.Layer, none.TimeOffset, none.Width, none.Lasterror   ' expect: False 0 0 0 0

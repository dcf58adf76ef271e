' Audio properties live as long as the movie is open; a channel layout is in the file.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Print m.RateChangesPreservePitchKRZ, m.PitchKRZ               ' expect: False 0
m.RateChangesPreservePitchKRZ = True
m.PitchKRZ = 0.1
Print m.RateChangesPreservePitchKRZ, m.PitchKRZ               ' expect: True 0.10000000149011612
Print m.IsModified                                            ' expect: False

Dim sound As QTTrackKRZ = m.GetSoundTrackKRZ(1)
Dim layout As New QTAudioChannelLayoutKRZ
layout.ChannelLayoutTag = 6619138    ' stereo
sound.AudioChannelLayout = layout
Print sound.Lasterror, m.IsModified                           ' expect: 0 True
m.PitchKRZ = 5
m.Save
Print m.PitchKRZ                                              ' expect: 5
Dim saved As Movie = OpenMovie(path)
Print saved.PitchKRZ, saved.RateChangesPreservePitchKRZ       ' expect: 0 False
' What is read is a layout without values.
Dim read As QTAudioChannelLayoutKRZ = saved.GetSoundTrackKRZ(1).AudioChannelLayout
Print read.ChannelLayoutTag, read.NumberChannelDescriptions, saved.GetSoundTrackKRZ(1).Lasterror   ' expect: 0 0 0
Print saved.AudioSummaryChannelLayoutKRZ.ChannelLayoutTag     ' expect: 0
Print OpenMovie(TestMovie("edited")).AudioSummaryChannelLayoutKRZ Is Nil   ' expect: True

Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print video.AudioChannelLayout Is Nil, video.Lasterror <> 0   ' expect: True True
sound.AudioChannelLayout = Nil
Print sound.Lasterror                                         ' expect: -1
Dim none As New QTTrackKRZ
Print none.AudioChannelLayout Is Nil, none.Lasterror          ' expect: True -1
none.AudioChannelLayout = layout
Print none.Lasterror                                          ' expect: -1

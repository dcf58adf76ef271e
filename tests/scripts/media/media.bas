' The media of each track: its type, handles, samples and files.
Dim m As Movie = OpenMovie(TestMovie("two-tracks"))
Dim picture As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim sound As QTTrackKRZ = m.GetSoundTrackKRZ(1)
picture.Lasterror = 55
Print picture.MediaType, picture.MediaSampleCount, picture.MediaSampleDescriptionCount, picture.FileCount   ' expect: vide 100 1 1
Print sound.MediaType, sound.MediaSampleCount, sound.MediaSampleDescriptionCount, sound.FileCount   ' expect: soun 441000 1 1

' Handles are stable, not nil, and each media has its own.
Dim media As Integer = picture.MediaHandle
Dim handler As Integer = picture.MediaHandlerHandle
Print media <> 0, handler <> 0, media <> handler, media <> picture.TrackHandle    ' expect: True True True True
Print media = picture.MediaHandle, handler = picture.MediaHandlerHandle           ' expect: True True
Print m.GetTrackIndexKRZ(1).MediaHandle = media, m.GetTrackIndexKRZ(1).MediaHandlerHandle = handler   ' expect: True True
Print sound.MediaHandle <> media, sound.MediaHandlerHandle <> handler             ' expect: True True
Print picture.Lasterror                                                           ' expect: 55

Print OpenMovie(TestMovie("timecode")).GetTrackIndexKRZ(2).MediaType              ' expect: tmcd
Print OpenMovie(TestMovie("chapters")).GetTrackIndexKRZ(2).MediaSampleCount       ' expect: 3
Print OpenMovie(TestMovie("tables")).GetVideoTrackKRZ(1).MediaSampleCount         ' expect: 12
Dim silent As QTTrackKRZ = OpenMovie(TestMovie("silent")).GetSoundTrackKRZ(1)
Print silent.MediaType, silent.MediaSampleCount, silent.MediaSampleDescriptionCount   ' expect: soun 0 1

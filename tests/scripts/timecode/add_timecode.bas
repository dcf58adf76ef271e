' A timecode track is built below the pictures, and stays what it is in the saved file.
' references-kept: 4
' CurrentTimeCode leaves the list of the source that it asks for.
Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Print m.HasTimeCodeTrackKRZ, "[" + m.CurrentTimeCodeStringKRZ + "]", m.TimeCodeDisplayedKRZ   ' expect: False [] False
m.TimeCodeDisplayedKRZ = True
Print m.IsModified, m.TrackCountKRZ                              ' expect: False 2

Dim p As New QTTimeCodeCreationParametersKRZ
p.Hours = 1
Print m.AddTimeCodeToMovieKRZ(p), m.TrackCountKRZ                ' expect: 0 3
Dim line As Integer = p.Height \ 65536
Print line > 12 And line < 40, p.Height Mod 65536                ' expect: True 0
Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(3)
Print t.MediaType, t.TrackEnabled, t.Width, t.Height = line, t.Duration, t.MediaSampleCount, MediaTimeScale(t.TrackHandle)   ' expect: tmcd False 320 True 6000 1 600
Dim a, b, u, c, d, v, x, y, w As Integer
t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
Print x \ 65536, y \ 65536                                       ' expect: 0 240
Dim type As String, id As Integer
Print TrackReference(m.GetVideoTrackKRZ(1).TrackHandle, 1, type, id), type, id = t.TrackID   ' expect: True tmcd True
m.Save

Sub Show(m As Movie)
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(3)
  Dim tc As QTTimeCodeKRZ = t.TimeCodeAtTime(300)
  Print tc.SourceName, tc.Flags, tc.TimeScale, tc.FrameDuration, tc.NumberOfFrames, tc.FrameNumber, t.TimeCodeToString(tc), t.Lasterror
  m.Position = 1200
  Print m.CurrentTimeCodeStringKRZ, t.CurrentTimeCode.FrameNumber, "[" + t.CurrentTimeCode.SourceName + "]", t.Lasterror, m.TimeCodeDisplayedKRZ
End Sub
For Each one As Movie In Array(m, OpenMovie(path))
  Show one
  ' expect: KRZ REALbasic Plugin 3 2997 100 30 107906 01:00:00;14 -1
  ' expect: 01:00:01;29 107951 [] 0 False
Next
' expect: KRZ REALbasic Plugin 3 2997 100 30 107906 01:00:00;14 -1
' expect: 01:00:01;29 107951 [] 0 False

' Showing it enables the track, and both are in the file.
m.TimeCodeDisplayedKRZ = True
Print m.TimeCodeDisplayedKRZ, t.TrackEnabled                     ' expect: True True
m.Save
Dim again As Movie = OpenMovie(path)
Print again.TimeCodeDisplayedKRZ, again.GetTrackIndexKRZ(3).TrackEnabled   ' expect: True True
m.TimeCodeDisplayedKRZ = False
m.Save
again = OpenMovie(path)
Print again.TimeCodeDisplayedKRZ, again.GetTrackIndexKRZ(3).TrackEnabled   ' expect: False False
' The flag alone decides what is answered.
t.TrackEnabled = True
Print m.TimeCodeDisplayedKRZ                                     ' expect: False

' Times outside: of the media, and where the movie has ended.
Print t.TimeCodeAtTime(6000) Is Nil, t.Lasterror, t.TimeCodeAtTime(-1) Is Nil, t.Lasterror   ' expect: True -2032 True -2032
m.Position = 6000
Print t.CurrentTimeCode Is Nil, t.Lasterror, "[" + m.CurrentTimeCodeStringKRZ + "]"   ' expect: True -2015 []

' A track of another media has no time codes.
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print video.TimeCodeAtTime(0) Is Nil, video.Lasterror, video.CurrentTimeCode Is Nil, video.Lasterror   ' expect: True -2147450878 True -2147450878

' A second track, of everything that can be asked for. Then all of them go, with the references to them.
p = New QTTimeCodeCreationParametersKRZ
p.DropFrames = False : p.IsNeg = True : p.Minutes = 5 : p.TimeScale = 25 : p.FrameDuration = 1
p.NumberOfFrames = 25 : p.Height = 100 * 65536 : p.DisplayTimeCode = True : p.DisplayBelowVideo = False
p.SourceName = "Bänd 7" : p.FontName = "Courier" : p.FontSize = 24
Print m.AddTimeCodeToMovieKRZ(p), p.Height \ 65536, m.TrackCountKRZ   ' expect: 0 100 4
t = m.GetTrackIndexKRZ(4)
Print t.TrackEnabled, t.Height > line, t.Height < 60             ' expect: True True True
Dim tc As QTTimeCodeKRZ = t.TimeCodeAtTime(600)
Print t.TimeCodeToString(tc), tc.FrameNumber, tc.Minutes, tc.IsNeg, tc.SourceName   ' expect: -00:04:59:00 -7475 132 True Bänd 7
t.GetTrackRawMatrix(a, b, u, c, d, v, x, y, w)
Print y                                                          ' expect: 0
m.Save
m.DeleteTimeCodeTracksKRZ
Print m.HasTimeCodeTrackKRZ, m.TrackCountKRZ, TrackReference(video.TrackHandle, 1, type, id)   ' expect: False 2 False
m.Save
Print OpenMovie(path).TrackCountKRZ, MovieProblems(OpenMovie(path)) = ""   ' expect: 2 True

' Without pictures nothing is made.
Dim silent As Movie = NewMovie(600)
Print silent.AddTimeCodeToMovieKRZ(p), silent.TrackCountKRZ      ' expect: -2030 0

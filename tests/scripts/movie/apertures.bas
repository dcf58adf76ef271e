' Aperture dimensions, worked out by hand: only widths are scaled, in exact fractions, rounded once.
'   720 * 10/11 = 654.5454...   720 * 59/54 = 786.666...   41472/59 * 59/54 = 768   1416 * 4/3 = 1888
Dim path As String = TestMovie("anamorphic")
Dim m As Movie = OpenMovie(path, True)
Print m.GetMovieApertureModeKRZ                               ' expect: clas
Print m.SetMovieApertureModeKRZ("clas"), m.IsModified         ' expect: 0 False
Dim first As QTTrackKRZ = m.GetTrackIndexKRZ(1)
Dim text As QTTrackKRZ = m.GetTrackIndexKRZ(5)
Print Sizes(first)                                            ' expect: none

' Any mode but the classic one makes the dimensions first; tracks without pictures are left alone.
Print m.SetMovieApertureModeKRZ("clea"), m.GetMovieApertureModeKRZ, m.IsModified   ' expect: 0 clea True
Print Sizes(first)                                            ' expect: clea 42896291x31457280 prod 42896291x31457280 enco 47185920x31457280
Print Sizes(m.GetTrackIndexKRZ(2))                            ' expect: clea 50331648x37748736 prod 51554987x37748736 enco 47185920x37748736
Print Sizes(m.GetTrackIndexKRZ(3))                            ' expect: clea 123731968x69599232 prod 125829120x70778880 enco 94371840x70778880
Print Sizes(m.GetTrackIndexKRZ(4))                            ' expect: clea 41943040x31457280 prod 41943040x31457280 enco 41943040x31457280
Print Sizes(text)                                             ' expect: none

' The mode says which size a track reports; the file's own size stays.
Print first.Width, m.GetTrackIndexKRZ(3).Width, m.GetTrackIndexKRZ(3).Height   ' expect: 654 1888 1062
Print m.SetMovieApertureModeKRZ("prod"), first.Width, m.GetTrackIndexKRZ(2).Width   ' expect: 0 654 786
Print m.SetMovieApertureModeKRZ("enco"), m.GetTrackIndexKRZ(3).Width          ' expect: 0 1440
Print m.SetMovieApertureModeKRZ("zzzz"), m.GetMovieApertureModeKRZ           ' expect: -50 enco
' Three letters give no code padded with a blank, two give no letters at all.
Print m.SetMovieApertureModeKRZ("pro"), m.SetMovieApertureModeKRZ(""), m.GetMovieApertureModeKRZ   ' expect: -50 -50 enco

m.Save
Print m.GetMovieApertureModeKRZ                               ' expect: enco
m.Close
Dim again As Movie = OpenMovie(path, True)
Print again.GetMovieApertureModeKRZ, Sizes(again.GetTrackIndexKRZ(1))   ' expect: clas clea 42896291x31457280 prod 42896291x31457280 enco 47185920x31457280
Print again.GetTrackIndexKRZ(1).Width                         ' expect: 720
Print again.SetMovieApertureModeKRZ("clea"), again.IsModified ' expect: 0 False

' Track by track. What is seen and has no pictures has its own size three times.
Dim t As QTTrackKRZ = again.GetTrackIndexKRZ(1)
t.Lasterror = 6
Print t.RemoveTrackApertureModeDimensions, Sizes(t)           ' expect: 0 none
Print t.RemoveTrackApertureModeDimensions, t.Width            ' expect: 0 720
Print t.SetTrackApertureModeDimensionsUsingSampleDescription, Sizes(t)   ' expect: 0 clea 42896291x31457280 prod 42896291x31457280 enco 47185920x31457280
Print again.GetTrackIndexKRZ(5).GenerateTrackApertureModeDimensions, Sizes(again.GetTrackIndexKRZ(5))   ' expect: 0 clea 0x0 prod 0x0 enco 0x0
SetTrackAperture(t.TrackHandle, "prod", 700.5, 1)
Print t.GenerateTrackApertureModeDimensions, Sizes(t), t.Lasterror   ' expect: 0 clea 42896291x31457280 prod 42896291x31457280 enco 47185920x31457280 6
Print again.RemoveMovieApertureModeDimensionsKRZ, again.GetMovieApertureModeKRZ   ' expect: 0 clas
again.Save
Dim third As Movie = OpenMovie(path)
Print Sizes(third.GetTrackIndexKRZ(1)), third.GetTrackIndexKRZ(3).Width   ' expect: none 1440
Print again.GenerateMovieApertureModeDimensionsKRZ, again.IsModified   ' expect: 0 True

' An unknown mode makes the dimensions all the same.
Dim other As Movie = OpenMovie(TestMovie("two-tracks"))
Print other.SetMovieApertureModeKRZ("abcd"), Sizes(other.GetVideoTrackKRZ(1)) <> "none"   ' expect: -50 True
Print other.GetSoundTrackKRZ(1).GenerateTrackApertureModeDimensions   ' expect: -2009
' A movie without pictures has nothing to make.
Dim silent As Movie = OpenMovie(TestMovie("silent"))
Print silent.SetMovieApertureModeKRZ("prod"), silent.GetMovieApertureModeKRZ, silent.IsModified   ' expect: 0 prod False

' Apertures that cannot be: an error, and nothing changes.
Dim bad As Movie = OpenMovie(TestMovie("bad-apertures"))
Print bad.GenerateMovieApertureModeDimensionsKRZ, bad.IsModified, InStr(MovieFailure, "track 1") > 0   ' expect: -2041 False True
Print bad.SetMovieApertureModeKRZ("clea"), bad.GetMovieApertureModeKRZ   ' expect: -2041 clas
Dim results() As String
For i As Integer = 1 To bad.TrackCountKRZ
  results.Append Str(bad.GetTrackIndexKRZ(i).GenerateTrackApertureModeDimensions)
Next
Print Join(results)                                           ' expect: -2041 -2041 -2041 -2041 -2041 -2041 0
Print Sizes(bad.GetTrackIndexKRZ(7))                          ' expect: clea 4194304x3145728 prod 4194304x3145728 enco 4194304x3145728

Dim none As New QTTrackKRZ
Print none.GenerateTrackApertureModeDimensions, none.RemoveTrackApertureModeDimensions, none.SetTrackApertureModeDimensionsUsingSampleDescription, none.Lasterror   ' expect: -1 -1 -1 0
again.Close
Print again.GetMovieApertureModeKRZ = "", again.SetMovieApertureModeKRZ("clea"), again.GenerateMovieApertureModeDimensionsKRZ, again.RemoveMovieApertureModeDimensionsKRZ   ' expect: True -1 -1 -1

' The three sizes in 16.16.
Function Sizes(t As QTTrackKRZ) As String
  Dim texts() As String
  For Each mode As String In Split("clea prod enco")
    Dim width As Double, height As Double
    If Not TrackAperture(t.TrackHandle, mode, width, height) Then Return "none"
    texts.Append mode + " " + Str(Integer(width * 65536)) + "x" + Str(Integer(height * 65536))
  Next
  Return Join(texts)
End Function

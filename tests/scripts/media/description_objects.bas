' Sample description objects hold what the records of the file say, field by field.
Dim m As Movie = OpenMovie(TestMovie("described"))
Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(1)
Dim v As QTVideoSampleDescriptionKRZ = t.MediaVideoSampleDescription(1)
Print t.Lasterror, v.CodecType, v.CodecVendor, v.TemporalQuality, v.SpatialQuality   ' expect: 0 SVQ3 appl 513 -2
Print v.Width, v.Height, v.HorizontalResolution, v.VerticalResolution                ' expect: 640 -1 72 -0.5
Print v.Size, v.FrameCount, "[" + v.CodecName + "]", v.Depth                         ' expect: 2147483647 3 [Sorenson Video 3] 24
Print Encoding(v.CodecName) = Encodings.ASCII                                        ' expect: True

' What a short record leaves out is zero, and a name is cut where the record ends.
v = t.MediaVideoSampleDescription(2)
Print t.Lasterror, v.CodecType, Asc(v.CodecVendor), v.Width, v.VerticalResolution, "[" + v.CodecName + "]", v.Depth   ' expect: 0 SVQ3 0 0 0 [] 0
v = t.MediaVideoSampleDescription(3)
Print v.Width, v.FrameCount, "[" + v.CodecName + "]", v.Depth                        ' expect: 640 3 [Sore] 0

' An object is a copy of its own.
v.Width = 5
v = t.MediaVideoSampleDescription(1)
Print v.Width, t.MediaVideoSampleDescription(1).Width                                ' expect: 640 640
v.Width = 5
Print t.MediaVideoSampleDescription(1).Width                                         ' expect: 640

' Sound keeps its values in other places from version 2 on; what comes after is not known.
t = m.GetTrackIndexKRZ(2)
For i As Integer = 1 To 6
  Dim s As QTSoundSampleDescriptionKRZ = t.MediaSoundSampleDescription(i)
  If s Is Nil Then
    Print i, "nil", t.Lasterror
  Else
    Print s.Version, s.CodecType, s.CodecVendor, s.ChannelCount, s.SampleSize, s.SampleRate, t.Lasterror
  End If
  ' expect: 0 QDM2 QDes 6 -16 44100 0
  ' expect: 1 QDM2 QDes 6 -16 44100 0
  ' expect: 2 QDM2 QDes 70000 24 192000.25 0
  ' expect: 4 nil 0
  ' expect: 5 nil 0
  ' expect: 2 QDM2 QDes 0 0 0 0
Next

t = m.GetTrackIndexKRZ(3)
Dim x As QTTextSampleDescriptionKRZ = t.MediaTextSampleDescription(1)
Print x.CodecType, x.DisplayFlags, x.TextJustification, x.BackgroundColor, x.TextColor   ' expect: text 65540 -1 &c123456 &cFEDCBA
Print x.Top, x.Left, x.Height, x.Width                                              ' expect: 10 -20 100 240
Print x.TextHeight, x.TextAscent, x.TextFontID, x.TextSize, x.TextFace              ' expect: 16 13 -1 12 0
Print x.Bold, x.Italic, x.Underline, x.Outline, x.Shadow, x.Condense, x.Extend      ' expect: True False True False True False True
Print x.DefaultFontName, Encoding(x.DefaultFontName) = Encodings.MacRoman           ' expect: Lücida True
x = t.MediaTextSampleDescription(2)
Print x.Bold, x.Italic, x.Underline, x.Outline, x.Shadow, x.Condense, x.Extend      ' expect: False True False True False True False
' The box has lost its lower edge.
x = t.MediaTextSampleDescription(3)
Print x.Top, x.Left, x.Height, x.Width, x.TextSize, "[" + x.DefaultFontName + "]"   ' expect: 10 -20 -10 20 0 []

Print m.GetTrackIndexKRZ(4).MediaSpriteSampleDescription(1).DecompressorType        ' expect: one 
Print m.GetTrackIndexKRZ(5).MediaMusicSampleDescription(1).CodecType                ' expect: form
Dim d As QTThreeDeeSampleDescriptionKRZ = m.GetTrackIndexKRZ(6).MediaThreeDeeSampleDescription(1)
Print "[" + d.RendererType + "|" + d.DecompressorType + "]"                         ' expect: [one |two ]
Print m.GetTrackIndexKRZ(7).MediaFlashSampleDescription(1).DecompressorType         ' expect: one 

' Fewer than 16 bytes make no object.
t = m.GetTrackIndexKRZ(4)
Print t.MediaSampleDescriptionRaw(2).Size, t.MediaSpriteSampleDescription(2) Is Nil, t.Lasterror   ' expect: 12 True 0
Print t.MediaSampleDescription(2) Is Nil, t.Lasterror                               ' expect: True 0

' Without a kind the media decides; a kind that is not the media's is not asked for.
Dim kinds As String
For i As Integer = 1 To 8
  t = m.GetTrackIndexKRZ(i)
  Dim any As QTSampleDescriptionKRZ = t.MediaSampleDescription(1)
  kinds = kinds + Str(t.Lasterror)
  If any IsA QTVideoSampleDescriptionKRZ Then kinds = kinds + " video "
  If any IsA QTSoundSampleDescriptionKRZ Then kinds = kinds + " sound "
  If any IsA QTTextSampleDescriptionKRZ Then kinds = kinds + " text "
  If any IsA QTSpriteSampleDescriptionKRZ Then kinds = kinds + " sprite "
  If any IsA QTMusicSampleDescriptionKRZ Then kinds = kinds + " music "
  If any IsA QTThreeDeeSampleDescriptionKRZ Then kinds = kinds + " 3D "
  If any IsA QTFlashSampleDescriptionKRZ Then kinds = kinds + " flash "
  If i = 8 Then kinds = kinds + " " + any.CodecType
  Dim same As Boolean = (t.MediaVideoSampleDescription(1) Is Nil) = (i <> 1) And (t.MediaFlashSampleDescription(1) Is Nil) = (i <> 7)
  If Not same Then Print "another kind was made of track", i
Next
Print kinds   ' expect: 0 video 0 sound 0 text 0 sprite 0 music 0 3D 0 flash 0 tmcd

t = m.GetTrackIndexKRZ(1)
Print t.MediaSoundSampleDescription(1) Is Nil, t.Lasterror                          ' expect: True -1
Print t.MediaVideoSampleDescription(4) Is Nil, t.Lasterror                          ' expect: True -2050
Print t.MediaSampleDescription(0) Is Nil, t.Lasterror                               ' expect: True -2050
Dim none As New QTTrackKRZ
Print none.MediaSampleDescription(1) Is Nil, none.Lasterror, none.MediaMusicSampleDescription(1) Is Nil   ' expect: True -1 True

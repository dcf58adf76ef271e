' Sample description objects hold what scripts put in them; the base class's part is shared.
Dim v As New QTVideoSampleDescriptionKRZ
Print "[" + v.CodecType + v.CodecVendor + v.CodecName + "]", v.Width, v.Depth, v.HorizontalResolution   ' expect: [] 0 0 0
v.CodecType = "jpeg" : v.CodecVendor = "appl" : v.CodecName = "Photo" : v.CodecName = v.CodecName + " - JPEG"
v.TemporalQuality = 512 : v.SpatialQuality = -1 : v.Width = 640 : v.Height = 480 : v.Size = 2147483647
v.FrameCount = 1 : v.Depth = 24 : v.HorizontalResolution = 72.25 : v.VerticalResolution = -0.5
Print v.CodecType, v.CodecVendor, v.CodecName        ' expect: jpeg appl Photo - JPEG
Print v.TemporalQuality, v.SpatialQuality, v.Width, v.Height, v.Size, v.FrameCount, v.Depth   ' expect: 512 -1 640 480 2147483647 1 24
Print v.HorizontalResolution, v.VerticalResolution   ' expect: 72.25 -0.5
Dim base As QTSampleDescriptionKRZ = v
Print base.CodecType, base IsA QTVideoSampleDescriptionKRZ, base IsA QTTextSampleDescriptionKRZ   ' expect: jpeg True False
base.CodecType = "png "
Print "[" + v.CodecType + "]"                        ' expect: [png ]

Dim s As New QTSoundSampleDescriptionKRZ
s.CodecVendor = "four" : s.ChannelCount = 6 : s.SampleSize = 24 : s.SampleRate = 48000.5 : s.Version = 2
Print s.CodecVendor, s.ChannelCount, s.SampleSize, s.SampleRate, s.Version   ' expect: four 6 24 48000.5 2

Dim x As New QTTextSampleDescriptionKRZ
Print x.Bold, x.Italic, x.Underline, x.Outline, x.Shadow, x.Condense, x.Extend   ' expect: False False False False False False False
x.DefaultFontName = "Lücida" : x.DisplayFlags = 4 : x.TextJustification = -1 : x.BackgroundColor = &cFF8000
x.Left = -1 : x.Top = 2 : x.Width = 3 : x.Height = 4 : x.TextHeight = 5 : x.TextAscent = 6 : x.TextFontID = 7
x.TextSize = 8 : x.TextColor = &c0000FF : x.TextFace = 9 : x.Italic = True : x.Outline = True
x.Extend = True
Print x.DefaultFontName, x.DisplayFlags, x.TextJustification, x.BackgroundColor, x.TextColor   ' expect: Lücida 4 -1 &cFF8000 &c0000FF
Print x.Left, x.Top, x.Width, x.Height, x.TextHeight, x.TextAscent, x.TextFontID, x.TextSize, x.TextFace   ' expect: -1 2 3 4 5 6 7 8 9
Print x.Bold, x.Italic, x.Underline, x.Outline, x.Shadow, x.Condense, x.Extend   ' expect: False True False True False False True

Dim d As New QTThreeDeeSampleDescriptionKRZ
d.RendererType = "rndr" : d.DecompressorType = "dcmp"
Dim f As New QTFlashSampleDescriptionKRZ
f.DecompressorType = "flsh"
Dim p As New QTSpriteSampleDescriptionKRZ
p.DecompressorType = "sprt" : p.DecompressorType = ""
Dim n As New QTMusicSampleDescriptionKRZ
n.CodecType = "musi"
Print d.RendererType, d.DecompressorType, f.DecompressorType, "[" + p.DecompressorType + "]", n.CodecType   ' expect: rndr dcmp flsh [] musi

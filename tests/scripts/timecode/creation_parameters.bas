' The timecode track that a script gets when it asks for nothing special.
Dim p As New QTTimeCodeCreationParametersKRZ
Print p.Height, p.FrameDuration, p.NumberOfFrames, p.TimeScale       ' expect: 20 100 30 2997
Print p.UseTimeCode, p.DropFrames, p.IsNeg, p.Use24Hours             ' expect: True True False True
Print p.Hours, p.Minutes, p.Seconds, p.Frames, p.CounterStartValue   ' expect: 0 0 0 0 0
Print p.DisplayBelowVideo, p.DisplayTimeCode                         ' expect: True False
Print p.SourceName                                                   ' expect: KRZ REALbasic Plugin
Print p.FontName, p.FontFace, p.FontSize, p.FontForeColor, p.FontBackColor   ' expect: Monaco -1 -1 &c000000 &cFFFFFF

p.SourceName = "tape 7" : p.FontForeColor = &cFF0000 : p.DropFrames = False : p.Hours = -1
Print p.SourceName, p.FontForeColor, p.FontBackColor, p.DropFrames, p.UseTimeCode, p.Hours   ' expect: tape 7 &cFF0000 &cFFFFFF False True -1

' Closing lets both texts go, once; the numbers stay.
p.Close
p.Close
Print "[" + p.SourceName + p.FontName + "]", p.TimeScale             ' expect: [] 2997
p.FontName = "Geneva"
Print p.FontName                                                     ' expect: Geneva

' A time code is four bytes seen as parts or as one counter, and flags seen one by one or together.
Dim c As New QTTimeCodeKRZ
Print c.UseTimeCode, c.DropFrames, c.IsNeg, c.Use24Hours, c.Flags   ' expect: True False False False 0
Print c.NumberOfFrames, c.TimeScale, c.FrameDuration, c.Counter, c.FrameNumber, "[" + c.SourceName + "]"   ' expect: 0 0 0 0 0 []

c.Hours = 1 : c.Minutes = 2 : c.Seconds = 3 : c.Frames = 4
Print Hex(c.Counter), c.Hours, c.Minutes, c.Seconds, c.Frames       ' expect: 4030201 1 2 3 4
c.Counter = -2
Print c.Hours, c.Minutes, c.Seconds, c.Frames                       ' expect: 254 255 255 255
' A part is a byte.
c.Minutes = 256 + 7
Print c.Minutes, c.Hours                                            ' expect: 7 254

c.UseTimeCode = False
Print c.Flags                                                       ' expect: 8
c.DropFrames = True : c.Use24Hours = True : c.IsNeg = True
Print c.Flags, c.IsNeg                                              ' expect: 15 True
c.UseTimeCode = True : c.DropFrames = False
Print c.Flags                                                       ' expect: 6
c.Flags = 9
Print c.UseTimeCode, c.DropFrames, c.IsNeg, c.Use24Hours            ' expect: False True False False
c.Flags = -1 : c.IsNeg = False
Print c.Flags                                                       ' expect: -5

c.NumberOfFrames = 30 : c.TimeScale = 30000 : c.FrameDuration = 1001 : c.FrameNumber = -5
c.SourceName = "réel"
Print c.NumberOfFrames, c.TimeScale, c.FrameDuration, c.FrameNumber, c.SourceName   ' expect: 30 30000 1001 -5 réel
c.NumberOfFrames = 300
Print c.NumberOfFrames                                              ' expect: 44

' Closing lets the name go, once; the rest stays.
c.Close
c.Close
Print "[" + c.SourceName + "]", c.FrameNumber                       ' expect: [] -5
c.SourceName = "again"
Print c.SourceName                                                  ' expect: again

' The graphics mode of everything that is seen, kept in the media's header.
Dim path As String = TestMovie("anamorphic")
Dim m As Movie = OpenMovie(path, True)
Dim v As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim text As QTTrackKRZ = m.GetTextTrackKRZ(1)
v.MediaSetGraphicsMode(36, &cFF8000)
Print v.Lasterror                                             ' expect: 0
Print Mode(v)                                                 ' expect: 36 255 128 0 0
' Of the mode 16 bits are kept.
text.MediaSetGraphicsMode(65536 + 257, &c123456)
Print Mode(text)                                              ' expect: 257 18 52 86 0
m.Save
Dim again As Movie = OpenMovie(path)
Print Mode(again.GetVideoTrackKRZ(1))                         ' expect: 36 255 128 0 0
Print Mode(again.GetTextTrackKRZ(1))                          ' expect: 257 18 52 86 0
Print again.GetTextTrackKRZ(1).MediaSampleCount               ' expect: 1

' Sound is not seen.
Dim s As QTTrackKRZ = OpenMovie(TestMovie("tone")).GetSoundTrackKRZ(1)
s.MediaSetGraphicsMode(1, &c000000)
Print s.Lasterror                                             ' expect: -2147450878
Print Mode(s)                                                 ' expect: 0 0 0 0 -2147450878
Dim none As New QTTrackKRZ
none.Lasterror = 4
none.MediaSetGraphicsMode(1, &c000000)
Print none.Lasterror                                          ' expect: -1
Print Mode(none)                                              ' expect: 0 0 0 0 -1

Function Mode(t As QTTrackKRZ) As String
  Dim number As Integer = 5
  Dim shade As Color = &c010203
  t.MediaGetGraphicsMode(number, shade)
  Return Str(number) + " " + Str(shade.Red) + " " + Str(shade.Green) + " " + Str(shade.Blue) + " " + Str(t.Lasterror)
End Function

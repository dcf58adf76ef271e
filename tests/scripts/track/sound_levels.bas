' Meters and bands around the movie's current time: 0.5 s of nothing, 1 s of 1 kHz at 0.4 of full scale
' on the left and 0.2 on the right, 0.5 s of silence.
Dim m As Movie = OpenMovie(TestMovie("tone"))
Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
m.Position = 600
Meter(t)                                                      ' expect: 0 0 0 0
t.SoundLevelMeteringEnabled = True
Meter(t)                                                      ' expect: 2 102 51 0
m.Position = 100
Meter(t)                                                      ' expect: 2 0 0 0
m.Position = 1100
Meter(t)                                                      ' expect: 2 0 0 0
m.Position = m.Duration
Meter(t)                                                      ' expect: 2 0 0 0
' The edges of what is played: nothing from beyond them is heard.
m.Position = 300
Meter(t)                                                      ' expect: 2 102 51 0

' Bands: none are set at first. 1 kHz lies in the band around 800 Hz.
m.Position = 600
Print Bands(t, 4), t.Lasterror                                ' expect: 0 0 0 0 0
Print t.SoundSetDefaultEqualizerBands, t.Lasterror            ' expect: 0 0
Print Bands(t, 8)                                             ' expect: 0 0 102 0 0 0 0 0
Print Bands(t, 3)                                             ' expect: 0 0 102
Print Bands(t, 10)                                            ' expect: 0 0 102 0 0 0 0 0 0 0
m.Position = 1100
Print Bands(t, 8)                                             ' expect: 0 0 0 0 0 0 0 0
t.SoundLevelMeteringEnabled = False
m.Position = 600
Print Bands(t, 8), t.Lasterror                                ' expect: 0 0 0 0 0 0 0 0 0
t.SoundLevelMeteringEnabled = True

' Bands of one's own: in any order, twice the same, 0, above what the rate can hold, and very close.
Print SetBands(t, "1000"), Bands(t, 1)                        ' expect: 0 102
Print SetBands(t, "4000,1000,250"), Bands(t, 3)               ' expect: 0 0 102 0
Print SetBands(t, "1000,1000,0,30000"), Bands(t, 4)           ' expect: 0 102 102 0 0
Print SetBands(t, "900,1000,1100"), Bands(t, 3)               ' expect: 0 0 102 0

' Wrong counts. The error stays when bands are set, whatever comes out.
t.Lasterror = 5
Dim block As New MemoryBlock(4)
Print t.SoundSetEqualizerBands(0, block), t.SoundSetEqualizerBands(-2, block), t.Lasterror   ' expect: -1 -1 5
Print t.SoundSetEqualizerBands(65536, block), t.Lasterror     ' expect: -50 5
Print t.SoundGetEqualizerBandLevels(0) Is Nil, t.Lasterror    ' expect: True -1
Try
  Print t.SoundSetEqualizerBands(0, Nil)
Catch e As NilObjectException
  Print e.Message                                             ' expect: memoryblock is nil
End Try

' What cannot be measured: nothing, or an error.
Dim b As Movie = OpenMovie(TestMovie("broken-sound"))
For i As Integer = 1 To b.TrackCountKRZ
  Dim s As QTTrackKRZ = b.GetTrackIndexKRZ(i)
  s.SoundLevelMeteringEnabled = True
  Meter(s)
  Print s.SoundSetDefaultEqualizerBands, s.SoundGetEqualizerBandLevels(8) Is Nil, s.Lasterror
  If Not (s.AudioChannelLayout Is Nil) Then Print "a layout"
Next
' No channels.
' expect: 0 0 0 0
' expect: 0 False 0
' expect: a layout
' Bytes that the file does not have.
' expect: 0 0 0 -2046
' expect: 0 True -2046
' expect: a layout
' An unknown code.
' expect: 1 0 0 0
' expect: 0 False 0
' expect: a layout
' An absurd rate, no duration: silence all the same.
' expect: 1 0 0 0
' expect: 0 False 0
' expect: a layout
' expect: 1 0 0 0
' expect: 0 False 0
' expect: a layout
' A description that is cut short has no channels.
' expect: 0 0 0 0
' expect: 0 False 0
' A damaged layout counts for nothing.
' expect: 1 0 0 0
' expect: 0 False 0
' expect: a layout

Sub Meter(t As QTTrackKRZ)
  Dim channels As Integer = 9, left As Integer = 9, right As Integer = 9
  t.SoundLevelMeterInfo(channels, left, right)
  Print channels, left, right, t.Lasterror
End Sub

Function Bands(t As QTTrackKRZ, count As Integer) As String
  Dim levels As MemoryBlock = t.SoundGetEqualizerBandLevels(count)
  Dim texts() As String
  For i As Integer = 0 To levels.Size - 1
    texts.Append Str(levels.Byte(i))
  Next
  Return Join(texts)
End Function

Function SetBands(t As QTTrackKRZ, list As String) As Integer
  Dim numbers() As String = Split(list, ",")
  Dim block As New MemoryBlock(numbers.Count * 4)
  For i As Integer = 0 To numbers.LastIndex
    block.Int32Value(i * 4) = Integer(Val(numbers(i))) * 65536
  Next
  Return t.SoundSetEqualizerBands(numbers.Count, block)
End Function

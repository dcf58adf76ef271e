' How sound is played: what a file can hold is there again after saving, the rest goes with the movie.
Dim path As String = TestMovie("tone")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
t.Lasterror = 7
Print t.SoundBalance, t.SoundGetEffectiveBalance, t.SoundGetEffectiveVolume, t.Lasterror    ' expect: 0 0 256 0
t.SoundBalance = -40
Print t.SoundBalance, t.SoundGetEffectiveBalance, t.Lasterror, m.IsModified   ' expect: -40 -40 0 True
' The value is cut to 16 bits, 4464, of which the right end is the most there is.
t.SoundBalance = 70000
Print t.SoundBalance                                          ' expect: 128
t.SoundBalance = -32768
Print t.SoundBalance                                          ' expect: -128
t.SoundBalance = 65530
Print t.SoundBalance                                          ' expect: -6
t.SoundBalance = 100

' The movie's volume counts, and so does that either is muted.
t.TrackVolume = 128
m.Volume = 384
Print t.SoundGetEffectiveVolume                               ' expect: 192
m.Volume = -256
Print t.SoundGetEffectiveVolume, t.Lasterror                  ' expect: 0 0
m.Volume = 512
t.TrackVolume = -1
Print t.SoundGetEffectiveVolume                               ' expect: 0
t.TrackVolume = 32767
m.Volume = 32767
Print t.SoundGetEffectiveVolume                               ' expect: 32767
t.TrackVolume = 64

' Bass and treble: setting one keeps the other; 16 bits are kept as they are.
t.SoundBass = -70 : t.SoundTreble = 70001
Print t.SoundBass, t.SoundTreble, t.Lasterror                 ' expect: -70 4465 0
t.SoundBass = 5
Print t.SoundBass, t.SoundTreble                              ' expect: 5 4465
t.SoundOutputComponentHandle = -3
Print t.SoundOutputComponentHandle, t.Lasterror               ' expect: -3 0
Print t.SoundLevelMeteringEnabled, t.Lasterror                ' expect: False 0
t.SoundLevelMeteringEnabled = True
Print t.SoundLevelMeteringEnabled, t.Lasterror                ' expect: True 0

m.Save
Print t.SoundBalance, t.SoundBass, t.SoundLevelMeteringEnabled   ' expect: 100 5 True
Dim again As Movie = OpenMovie(path)
Dim s As QTTrackKRZ = again.GetSoundTrackKRZ(1)
Print s.SoundBalance, s.TrackVolume, again.Volume             ' expect: 100 64 32767
Print s.SoundBass, s.SoundTreble, s.SoundOutputComponentHandle, s.SoundLevelMeteringEnabled   ' expect: 0 0 0 False

' Media that is no sound, and a track without media or without a track.
Dim v As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Refuse(v)                                                     ' expect: -2147450878
Dim none As New QTTrackKRZ
Refuse(none)                                                  ' expect: -1
Dim gone As QTTrackKRZ = OpenMovie(TestMovie("damaged")).GetTrackIndexKRZ(2)
Refuse(gone)                                                  ' expect: -1

' Prints the error that every row leaves, once when it is the same everywhere.
Sub Refuse(t As QTTrackKRZ)
  Dim errors As New Dictionary
  Dim n As Integer = 3, l As Integer = 4, r As Integer = 5
  t.SoundBalance = 1
  errors.Value(t.Lasterror) = 0
  t.SoundBass = 1
  errors.Value(t.Lasterror) = 0
  t.SoundTreble = 1
  errors.Value(t.Lasterror) = 0
  t.SoundOutputComponentHandle = 1
  errors.Value(t.Lasterror) = 0
  t.SoundLevelMeteringEnabled = True
  errors.Value(t.Lasterror) = 0
  If t.SoundBalance <> 0 Or t.SoundGetEffectiveBalance <> 0 Or t.SoundGetEffectiveVolume <> 0 Then Print "a value"
  errors.Value(t.Lasterror) = 0
  If t.SoundBass <> 0 Or t.SoundTreble <> 0 Or t.SoundOutputComponentHandle <> 0 Or t.SoundLevelMeteringEnabled Then Print "a value"
  errors.Value(t.Lasterror) = 0
  t.Lasterror = 9
  t.SoundLevelMeterInfo(n, l, r)
  If n <> 0 Or l <> 0 Or r <> 0 Then Print "a meter"
  errors.Value(t.Lasterror) = 0
  t.Lasterror = 9
  errors.Value(t.SoundSetDefaultEqualizerBands) = 0 : errors.Value(t.Lasterror) = 0
  If Not (t.SoundGetEqualizerBandLevels(3) Is Nil) Then Print "levels"
  errors.Value(t.Lasterror) = 0
  Dim bands As New MemoryBlock(4)
  t.Lasterror = 9
  errors.Value(t.SoundSetEqualizerBands(1, bands)) = 0
  If t.Lasterror <> 9 Then Print "the error was touched"
  For Each one As Variant In errors.Keys
    Print one
  Next
End Sub

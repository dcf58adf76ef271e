' krz sound set: volume, balance and channel layout of sound tracks.
#Include "changes.bas"
#Include "sound.bas"

Try
  Dim change As New MovieChange(Args(0))
  If CommandLine.Has("movie-volume") Then change.Target.Volume = VolumeOf("movie-volume")
  Dim selector As String
  If Args.Ubound > 0 Then selector = Args(1)
  If CommandLine.Has("volume") Or CommandLine.Has("balance") Or CommandLine.Has("layout") Then
    For Each t As QTTrackKRZ In SoundTracks(change.Target, selector)
      SetSound(t)
    Next
  ElseIf Not CommandLine.Has("movie-volume") Then
    Raise New UsageError("say what to set: --volume, --balance, --layout or --movie-volume")
  End If
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

Sub SetSound(t As QTTrackKRZ)
  If CommandLine.Has("volume") Then t.TrackVolume = VolumeOf("volume")
  If CommandLine.Has("balance") Then
    t.SoundBalance = BalanceOf(CommandLine.Value("balance"))
    Check(t)
  End If
  If Not CommandLine.Has("layout") Then Return
  Dim layout As QTAudioChannelLayoutKRZ = LayoutNamed(CommandLine.Value("layout"))
  Dim channels As Integer, rate As Double
  ShapeOf(t, channels, rate)
  If ChannelsOf(layout) <> channels Then Raise New UsageError("--layout " + CommandLine.Value("layout") + " is for " + Counted(ChannelsOf(layout), "channel") + ", but track " + Str(t.TrackID) + " has " + Str(channels))
  t.AudioChannelLayout = layout
  Check(t)
End Sub

Sub Check(t As QTTrackKRZ)
  If t.Lasterror <> 0 Then Fail(OfFile(Args(0), "track " + Str(t.TrackID) + " cannot be changed so (error " + Str(t.Lasterror) + "): " + MovieFailure), 1)
End Sub

' 1 is full.
Function VolumeOf(name As String) As Integer
  Dim number As New RegEx("^-?\d+(\.\d*)?$")
  Dim text As String = CommandLine.Value(name)
  If number.Search(text) Is Nil Or Abs(Val(text)) >= 128 Then Raise New UsageError("--" + name + " " + text + ": a volume is a number such as 0.8; 1 is full")
  Return Integer(Round(Val(text) * 256))
End Function

Function BalanceOf(text As String) As Integer
  Dim number As New RegEx("^-?\d+$")
  If number.Search(text) Is Nil Or Abs(Val(text)) > 128 Then Raise New UsageError("--balance " + text + ": from -128 (left) over 0 to 128 (right)")
  Return Integer(Val(text))
End Function

' Sound as people speak of it: decibels, and channels by their loudspeakers.

Const kSilence = -144.0

' Decibels below full scale, kSilence at least.
Function Decibels(level As Double) As Double
  If level <= 0 Then Return kSilence
  Return Max(20 * Log(level) / Log(10), kSilence)
End Function

Function DecibelText(level As Double) As String
  If level <= 0 Then Return "-inf"
  Return Format(Decibels(level), "0.0")
End Function

' The loudspeakers that channels of a layout may be for, in the order of their labels, from 1.
Function SpeakerNames() As String()
  Return Split("L R C LFE Ls Rs Lc Rc Cs Lsd Rsd Ts Vhl Vhc Vhr Tbl Tbc Tbr")
End Function

' "L R C LFE Ls Rs" of a layout; its tag or bitmap where it names no loudspeakers; "" for Nil.
Function LayoutText(layout As QTAudioChannelLayoutKRZ) As String
  If layout Is Nil Then Return ""
  Select Case layout.ChannelLayoutTag
  Case 6553601
    Return "mono"
  Case 6619138
    Return "stereo"
  Case 65536
    Return "bitmap " + Hex(layout.ChannelBitmap)
  Case 0
    Return LabelsText(layout)
  Else
    Return "tag " + Str(layout.ChannelLayoutTag \ 65536)
  End Select
End Function

Function LabelsText(layout As QTAudioChannelLayoutKRZ) As String
  Dim names() As String = SpeakerNames
  Dim found() As String
  For i As Integer = 0 To Min(layout.NumberChannelDescriptions, 64) - 1
    Dim label As Integer
    If Not (layout.ChannelDescription(i) Is Nil) Then label = layout.ChannelDescription(i).ChannelLabel
    If label >= 1 And label <= names.Count Then
      found.Append names(label - 1)
    Else
      found.Append Str(label)
    End If
  Next
  Return Join(found, " ")
End Function

' The layout that a text names: mono, stereo, quad, 5.1, 7.1 or loudspeakers with commas between them, such
' as L,R,C. Raises UsageError.
Function LayoutNamed(text As String) As QTAudioChannelLayoutKRZ
  Dim layout As New QTAudioChannelLayoutKRZ
  Select Case Lowercase(text)
  Case "mono"
    layout.ChannelLayoutTag = 6553601
    Return layout
  Case "stereo"
    layout.ChannelLayoutTag = 6619138
    Return layout
  Case "quad"
    text = "L,R,Ls,Rs"
  Case "5.1"
    text = "L,R,C,LFE,Ls,Rs"
  Case "7.1"
    text = "L,R,C,LFE,Ls,Rs,Lc,Rc"
  End Select
  Dim names() As String = SpeakerNames
  Dim parts() As String = Split(text, ",")
  If parts.Count > 64 Then Raise New UsageError("a layout has 64 channels at most")
  For i As Integer = 0 To parts.LastIndex
    Dim description As New QTAudioChannelDescriptionKRZ
    For place As Integer = 0 To names.LastIndex
      If Lowercase(names(place)) = Lowercase(Trim(parts(i))) Then description.ChannelLabel = place + 1
    Next
    If description.ChannelLabel = 0 Then Raise New UsageError("""" + parts(i) + """ is no loudspeaker; they are " + Join(names, ", "))
    layout.ChannelDescription(i) = description
  Next
  layout.NumberChannelDescriptions = parts.Count
  Return layout
End Function

' How many channels a layout is for; 0 when it does not say.
Function ChannelsOf(layout As QTAudioChannelLayoutKRZ) As Integer
  If layout.ChannelLayoutTag = 0 Then Return layout.NumberChannelDescriptions
  If layout.ChannelLayoutTag = 65536 Then Return 0
  Return layout.ChannelLayoutTag Mod 65536
End Function

' The sound tracks that a selector names, all without one. Raises UsageError when it names something else.
Function SoundTracks(m As Movie, selector As String) As QTTrackKRZ()
  If selector = "" Then selector = "sound"
  Dim found() As QTTrackKRZ = SelectTracks(m, selector)
  For Each t As QTTrackKRZ In found
    If t.MediaType <> "soun" Then Raise New UsageError("track " + Str(t.TrackID) + " is no sound but " + t.MediaType)
  Next
  Return found
End Function

' Channels and rate of a track's first description; 0 where it has none.
Sub ShapeOf(t As QTTrackKRZ, ByRef channels As Integer, ByRef rate As Double)
  Dim d As QTSoundSampleDescriptionKRZ = t.MediaSoundSampleDescription(1)
  If d Is Nil Then Return
  channels = d.ChannelCount
  rate = d.SampleRate
  If rate - rate <> 0 Then rate = 0
End Sub

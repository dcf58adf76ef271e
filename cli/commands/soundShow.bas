' krz sound show: how the sound tracks of a movie are played.
#Include "messages.bas"
#Include "times.bas"
#Include "selectors.bas"
#Include "descriptions.bas"
#Include "sound.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim selector As String
  If Args.Ubound > 0 Then selector = Args(1)
  Dim tracks() As QTTrackKRZ = SoundTracks(m, selector)
  If CommandLine.Has("json") Then ShowAsJSON(tracks, m) Else Show(tracks, m)
Catch e As UsageError
  Fail(e.Message, 2)
Catch e As IOException
  Fail(OfFile(Args(0), e.Message), 3)
End Try

Sub Show(tracks() As QTTrackKRZ, m As Movie)
  Print "    id  format      rate  ch  volume   heard  balance  levels  layout"
  For Each t As QTTrackKRZ In tracks
    Dim channels As Integer, rate As Double
    ShapeOf(t, channels, rate)
    Dim line As String = PadLeft(Str(t.TrackID), 6) + "  " + PadRight(CodecOf(t, 1), 6) + PadLeft(Format(rate, "0.##"), 10) + PadLeft(Str(channels), 4)
    line = line + PadLeft(Format(t.TrackVolume / 256, "0.00"), 8) + PadLeft(Format(t.SoundGetEffectiveVolume / 256, "0.00"), 8)
    line = line + PadLeft(Str(t.SoundBalance), 9) + PadLeft(YesOrNo(CanMeasureSound(t.TrackHandle)), 8)
    Print RTrim(line + "  " + LayoutText(TrackChannelLayout(t.TrackHandle)))
  Next
End Sub

Function YesOrNo(value As Boolean) As String
  If value Then Return "yes" Else Return "no"
End Function

Sub ShowAsJSON(tracks() As QTTrackKRZ, m As Movie)
  Dim list As New JSONItem("[]")
  For Each t As QTTrackKRZ In tracks
    Dim channels As Integer, rate As Double
    ShapeOf(t, channels, rate)
    Dim item As New JSONItem
    item.Value("id") = t.TrackID
    item.Value("codecType") = CodecOf(t, 1)
    item.Value("sampleRate") = rate
    item.Value("channelCount") = channels
    item.Value("volume") = t.TrackVolume
    item.Value("effectiveVolume") = t.SoundGetEffectiveVolume
    item.Value("balance") = t.SoundBalance
    item.Value("effectiveBalance") = t.SoundGetEffectiveBalance
    item.Value("movieVolume") = m.Volume
    item.Value("levels") = CanMeasureSound(t.TrackHandle)
    item.Value("layout") = LayoutDocument(TrackChannelLayout(t.TrackHandle))
    list.Append item
  Next
  Print list.ToString(True)
End Sub

Function LayoutDocument(layout As QTAudioChannelLayoutKRZ) As Variant
  If layout Is Nil Then Return Nil
  Dim document As New JSONItem
  document.Value("tag") = layout.ChannelLayoutTag
  document.Value("bitmap") = layout.ChannelBitmap
  document.Value("text") = LayoutText(layout)
  Dim labels As New JSONItem("[]")
  For i As Integer = 0 To Min(layout.NumberChannelDescriptions, 64) - 1
    labels.Append layout.ChannelDescription(i).ChannelLabel
  Next
  document.Value("labels") = labels
  Return document
End Function

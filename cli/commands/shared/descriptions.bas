' What a sample description says, by the names of its properties.

' The properties of description `index` of a track, in the order of its class; nothing but the code for
' kinds without a class.
Function DescriptionDocument(t As QTTrackKRZ, index As Integer) As JSONItem
  Dim document As New JSONItem
  document.Value("codecType") = CodecOf(t, index)
  Dim d As QTSampleDescriptionKRZ = t.MediaSampleDescription(index)
  If d IsA QTVideoSampleDescriptionKRZ Then
    AddVideo(document, QTVideoSampleDescriptionKRZ(d))
  ElseIf d IsA QTSoundSampleDescriptionKRZ Then
    AddSound(document, QTSoundSampleDescriptionKRZ(d))
  ElseIf d IsA QTTextSampleDescriptionKRZ Then
    AddText(document, QTTextSampleDescriptionKRZ(d))
  ElseIf d IsA QTSpriteSampleDescriptionKRZ Then
    document.Value("decompressorType") = CodeText(QTSpriteSampleDescriptionKRZ(d).DecompressorType)
  ElseIf d IsA QTFlashSampleDescriptionKRZ Then
    document.Value("decompressorType") = CodeText(QTFlashSampleDescriptionKRZ(d).DecompressorType)
  ElseIf d IsA QTThreeDeeSampleDescriptionKRZ Then
    document.Value("rendererType") = CodeText(QTThreeDeeSampleDescriptionKRZ(d).RendererType)
    document.Value("decompressorType") = CodeText(QTThreeDeeSampleDescriptionKRZ(d).DecompressorType)
  End If
  Return document
End Function

Sub AddVideo(document As JSONItem, d As QTVideoSampleDescriptionKRZ)
  document.Value("codecVendor") = CodeText(d.CodecVendor)
  document.Value("temporalQuality") = d.TemporalQuality
  document.Value("spatialQuality") = d.SpatialQuality
  document.Value("width") = d.Width
  document.Value("height") = d.Height
  document.Value("size") = d.Size
  document.Value("frameCount") = d.FrameCount
  document.Value("codecName") = d.CodecName
  document.Value("depth") = d.Depth
  document.Value("horizontalResolution") = d.HorizontalResolution
  document.Value("verticalResolution") = d.VerticalResolution
End Sub

Sub AddSound(document As JSONItem, d As QTSoundSampleDescriptionKRZ)
  document.Value("codecVendor") = CodeText(d.CodecVendor)
  document.Value("channelCount") = d.ChannelCount
  document.Value("sampleSize") = d.SampleSize
  ' A damaged file can hold what is no number.
  If d.SampleRate - d.SampleRate = 0 Then document.Value("sampleRate") = d.SampleRate Else document.Value("sampleRate") = Nil
  document.Value("version") = d.Version
End Sub

Sub AddText(document As JSONItem, d As QTTextSampleDescriptionKRZ)
  document.Value("defaultFontName") = d.DefaultFontName
  document.Value("displayFlags") = d.DisplayFlags
  document.Value("textJustification") = d.TextJustification
  document.Value("backgroundColor") = ColorText(d.BackgroundColor)
  document.Value("left") = d.Left
  document.Value("top") = d.Top
  document.Value("width") = d.Width
  document.Value("height") = d.Height
  document.Value("textHeight") = d.TextHeight
  document.Value("textAscent") = d.TextAscent
  document.Value("textFontID") = d.TextFontID
  document.Value("textSize") = d.TextSize
  document.Value("textColor") = ColorText(d.TextColor)
  document.Value("bold") = d.Bold
  document.Value("italic") = d.Italic
  document.Value("underline") = d.Underline
  document.Value("outline") = d.Outline
  document.Value("shadow") = d.Shadow
  document.Value("condense") = d.Condense
  document.Value("extend") = d.Extend
End Sub

' A four-character code as text; Nil when the file does not say: the code is then four zero bytes.
Function CodeText(code As String) As Variant
  If code = "" Or Asc(code) = 0 Then Return Nil
  Return ConvertEncoding(code, Encodings.UTF8)
End Function

Function ColorText(value As Color) As String
  Return "#" + Right(Str(value), 6)
End Function

' The code of a description, from its record: also of those too short or too new for an object.
Function CodecOf(t As QTTrackKRZ, index As Integer) As String
  Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(index)
  If raw Is Nil Then Return ""
  If raw.Size < 8 Then Return ""
  Return ConvertEncoding(DefineEncoding(raw.StringValue(4, 4), Encodings.MacRoman), Encodings.UTF8)
End Function

' The tracks of a movie as a map shows them: named, coloured, described in a line.
#Include "descriptions.bas"

Class MapTrack
  Track As QTTrackKRZ
  Name As String       ' "2 Sound"
  Detail As String     ' "mp4a · 2 channels · 48 kHz"
  Tint As Color
  Ink As Color = &cFFFFFF    ' what is legible on it

  Sub Constructor(t As QTTrackKRZ, index As Integer, isChapters As Boolean)
    Track = t
    Name = Str(index) + "  " + MediaName(t.MediaType, isChapters)
    Tint = MediaColor(t.MediaType)
    Detail = DetailOf(t)
    If Not t.TrackEnabled Then
      Tint = Mixed(Tint, &cFFFFFF, 0.45)
      Ink = &c1F2328
      Detail = "disabled · " + Detail
    End If
  End Sub
End Class

Function MediaName(mediaType As String, isChapters As Boolean) As String
  If isChapters Then Return "Chapters"
  Select Case mediaType
  Case "vide"
    Return "Pictures"
  Case "soun"
    Return "Sound"
  Case "text"
    Return "Text"
  Case "sbtl", "subt"
    Return "Subtitles"
  Case "clcp"
    Return "Captions"
  Case "tmcd"
    Return "Timecode"
  Case "hint"
    Return "Hints"
  Case "meta"
    Return "Timed metadata"
  Case "sprt"
    Return "Sprites"
  Case "musi"
    Return "Music"
  End Select
  If mediaType = "" Or Asc(mediaType) = 0 Then Return "Unknown media"
  Return "Media " + ConvertEncoding(mediaType, Encodings.UTF8)
End Function

Function MediaColor(mediaType As String) As Color
  Select Case mediaType
  Case "vide"
    Return &c3B6FB6
  Case "soun"
    Return &c2F8F63
  Case "text", "sbtl", "subt", "clcp"
    Return &cB9782A
  Case "tmcd"
    Return &c7A5CA8
  Case "meta"
    Return &c3F8794
  End Select
  Return &c71767D
End Function

Function DetailOf(t As QTTrackKRZ) As String
  Dim parts() As String
  Dim kinds As Integer = t.MediaSampleDescriptionCount
  If kinds > 0 Then
    Dim codec As String = CodecOf(t, 1)
    If codec <> "" And Asc(codec) <> 0 Then parts.Append Trim(codec)
  End If
  If kinds > 1 Then parts.Append "+" + Str(kinds - 1)
  Dim sound As QTSoundSampleDescriptionKRZ = t.MediaSoundSampleDescription(1)
  If Not (sound Is Nil) Then
    parts.Append Str(sound.ChannelCount) + " ch"
    If sound.SampleRate > 0 And sound.SampleRate < 10000000 Then parts.Append Format(sound.SampleRate / 1000, "0.###") + " kHz"
  ElseIf t.MediaType = "vide" Then
    parts.Append Str(t.Width) + "×" + Str(t.Height)
  End If
  Dim language As String = TrackLanguage(t.TrackHandle)
  If language <> "und" And language <> "" Then parts.Append language
  If t.MediaSampleCount = 1 Then parts.Append "1 sample" Else parts.Append Format(t.MediaSampleCount, "#,##0") + " samples"
  Return Join(parts, " · ")
End Function

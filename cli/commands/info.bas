' krz info: what is in a movie, for people.

Dim worst As Integer = 0
Dim shown As Integer = 0
For i As Integer = 0 To Args.Ubound
  Try
    Dim m As Movie = OpenMovie(Args(i))
    If shown > 0 Then Print ""
    ShowMovie(m, Args(i))
    shown = shown + 1
    m.Check
  Catch e As IOException
    StdErr.WriteLine("krz: " + e.Message)
    worst = 3
  End Try
Next
Quit(worst)

' A line about the movie, then a table of its tracks.
Sub ShowMovie(m As Movie, path As String)
  Print path
  Dim count As Integer = m.TrackCountKRZ
  Dim tracks As String = " tracks"
  If count = 1 Then tracks = " track"
  Print "  " + Clock(m.Duration / m.TimeScale) + ", " + Str(m.TimeScale) + " units a second, " + Str(count) + tracks
  If count = 0 Then Return
  Print ""
  Print "   #    id  type  format      from  duration       size  layer    samples"
  For i As Integer = 1 To count
    ShowTrack(m.GetTrackIndexKRZ(i), i, m.TimeScale)
  Next
End Sub

Sub ShowTrack(t As QTTrackKRZ, index As Integer, timeScale As Integer)
  Dim size As String = "-"
  If t.Width <> 0 Or t.Height <> 0 Then size = Str(t.Width) + "x" + Str(t.Height)
  Dim kind As String = t.MediaType
  If kind = "" Or Asc(kind) = 0 Then kind = "-"
  Dim format As String = "-"
  Dim formats As Integer = t.MediaSampleDescriptionCount
  If formats > 0 Then format = FormatOf(t, 1)
  If formats > 1 Then format = format + " +" + Str(formats - 1)
  Dim line As String = PadLeft(Str(index), 4) + PadLeft(Str(t.TrackID), 6) + "  " + PadRight(kind, 6) + PadRight(format, 8)
  line = line + PadLeft(Clock(t.TimeOffset / timeScale), 8) + PadLeft(Clock((t.Duration - t.TimeOffset) / timeScale), 10)
  line = line + PadLeft(size, 11) + PadLeft(Str(t.Layer), 7) + PadLeft(Str(t.MediaSampleCount), 11)
  If kind = "soun" Then line = line + SoundOf(t)
  line = line + AperturesOf(t)
  If t.FileCount > 1 Then line = line + "  " + Str(t.FileCount) + " files"
  If Not t.TrackEnabled Then line = line + "  disabled"
  Print line
End Sub

' The clean and the whole picture in square pixels, where the file says them and they differ from the size.
Function AperturesOf(t As QTTrackKRZ) As String
  Dim width As Double, height As Double, wholeWidth As Double, wholeHeight As Double
  If Not TrackAperture(t.TrackHandle, "clea", width, height) Then Return ""
  If Not TrackAperture(t.TrackHandle, "prod", wholeWidth, wholeHeight) Then Return ""
  Dim text As String
  If width <> t.Width Or height <> t.Height Then text = "  clean " + Format(width, "0.##") + "x" + Format(height, "0.##")
  If wholeWidth <> t.Width Or wholeHeight <> t.Height Then text = text + "  production " + Format(wholeWidth, "0.##") + "x" + Format(wholeHeight, "0.##")
  Return text
End Function

' Channels and rate of the first description.
Function SoundOf(t As QTTrackKRZ) As String
  Dim d As QTSoundSampleDescriptionKRZ = t.MediaSoundSampleDescription(1)
  If d Is Nil Then Return ""
  Return "  " + Str(d.ChannelCount) + " ch, " + Str(d.SampleRate) + " Hz"
End Function

' Seconds as "1:02:03.40", or "2:03.45" below an hour.
Function Clock(seconds As Double) As String
  Dim hundredths As Int64 = Int64(Round(seconds * 100))
  Dim minutes As Integer = Integer(hundredths \ 6000)
  Dim rest As Integer = Integer(hundredths Mod 6000)
  Dim text As String = Digits(rest \ 100, 2) + "." + Digits(rest Mod 100, 2)
  If minutes < 60 Then Return Str(minutes) + ":" + text
  Return Str(minutes \ 60) + ":" + Digits(minutes Mod 60, 2) + ":" + text
End Function

' A number with zeros in front up to `count` digits, four at most.
Function Digits(value As Integer, count As Integer) As String
  Dim text As String = Str(value)
  Return Left("0000", count - Len(text)) + text
End Function

' The four-character code of a sample description: bytes 4 to 7 of its record.
Function FormatOf(t As QTTrackKRZ, index As Integer) As String
  Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(index)
  If raw Is Nil Then Return ""
  If raw.Size < 8 Then Return ""
  Return ConvertEncoding(DefineEncoding(raw.StringValue(4, 4), Encodings.MacRoman), Encodings.UTF8)
End Function

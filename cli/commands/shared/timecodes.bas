' Rates and time codes as people write them, and as they are shown.
#Include "timecodeItem.bas"

Const kDropFrame = 1
Const kWraps = 2
Const kNegative = 4
Const kCounter = 8

Class FrameRate
  TimeScale As Integer        ' units a second
  FrameDuration As Integer    ' in these units
  Frames As Integer           ' a second, as labels count them
  Drops As Boolean

  ' 25, 23.976, 29.97df, 59.94ndf, 30000/1001. Raises UsageError.
  Sub Constructor(text As String)
    Dim form As New RegEx("^(\d+)(?:(?:\.(\d{1,6}))|/(\d+))?(df|ndf)?$")
    Dim found As RegExMatch = form.Search(Lowercase(text))
    If found Is Nil Then Raise New UsageError("""" + text + """ is no rate; a rate is 25, 23.976, 29.97df, 59.94ndf or 30000/1001")
    Drops = Right(Lowercase(text), 2) = "df" And Right(Lowercase(text), 3) <> "ndf"
    Dim scale As Int64 = Int64(Val(found.SubExpression(1)))
    Dim duration As Int64 = 1
    If found.SubExpression(3) <> "" Then
      duration = Int64(Val(found.SubExpression(3)))
    ElseIf found.SubExpression(2) <> "" Then
      Dim digits As Integer = Len(found.SubExpression(2))
      duration = Int64(Round(Pow(10, digits)))
      Dim rate As Double = Val(found.SubExpression(1) + "." + found.SubExpression(2))
      scale = Int64(Round(rate * duration))
      ' 23.976, 29.97 and their like stand for 1000/1001 of a whole number.
      Dim whole As Int64 = Int64(Floor(rate)) + 1
      If Abs(whole * 1000 / 1001 - rate) < 0.006 Then
        scale = whole * 1000
        duration = 1001
      End If
    End If
    Take(scale, duration, text)
  End Sub

  Sub Take(scale As Int64, duration As Int64, text As String)
    If scale < 1 Or duration < 1 Then Raise New UsageError("""" + text + """ is no rate: neither part may be 0")
    Dim a As Int64 = scale
    Dim b As Int64 = duration
    While b > 0
      Dim rest As Int64 = a Mod b
      a = b
      b = rest
    Wend
    scale = scale \ a
    duration = duration \ a
    Dim counted As Int64 = (scale * 2 + duration) \ (duration * 2)
    If counted < 1 Or counted > 255 Then Raise New UsageError("""" + text + """ cannot be counted: a rate has 1 to 255 frames a second")
    If scale > 2147483647 Or duration > 2147483647 Then Raise New UsageError("""" + text + """ has more digits than a rate takes")
    If Drops And counted Mod 30 <> 0 Then Raise New UsageError("drop-frame counting needs a multiple of 30 frames a second, not " + Str(counted))
    TimeScale = Integer(scale)
    FrameDuration = Integer(duration)
    Frames = Integer(counted)
  End Sub
End Class

' "29.97 frames a second (30000/1001)".
Function RateText(c As QTTimeCodeKRZ) As String
  If c.TimeScale <= 0 Or c.FrameDuration <= 0 Then Return "no rate (" + Str(c.TimeScale) + "/" + Str(c.FrameDuration) + ")"
  Dim text As String = Format(c.TimeScale / c.FrameDuration, "0.###") + " frames a second"
  If c.TimeScale Mod c.FrameDuration <> 0 Then text = text + " (" + Str(c.TimeScale) + "/" + Str(c.FrameDuration) + ")"
  Return text
End Function

' What the flags say, in words.
Function FlagText(c As QTTimeCodeKRZ) As String
  If Not c.UseTimeCode Then Return "a counter"
  Dim words() As String
  If c.DropFrames Then words.Append "drop-frame" Else words.Append "non-drop"
  If c.Use24Hours Then words.Append "wraps at 24 hours"
  If c.IsNeg Then words.Append "negative allowed"
  Return Join(words, ", ")
End Function

' What is wrong with how a time code counts.
Function FaultsOf(c As QTTimeCodeKRZ) As String()
  Dim faults() As String
  For Each line As String In Split(TimeCodeFaults(c.Flags, c.TimeScale, c.FrameDuration, c.NumberOfFrames), Chr(10))
    If line <> "" Then faults.Append line
  Next
  Return faults
End Function

' A time code that counts like another, of another frame.
Function TimeCodeLike(c As QTTimeCodeKRZ, frame As Integer, t As QTTrackKRZ) As QTTimeCodeKRZ
  Dim other As New QTTimeCodeKRZ
  other.Flags = c.Flags
  other.TimeScale = c.TimeScale
  other.FrameDuration = c.FrameDuration
  other.NumberOfFrames = c.NumberOfFrames
  other.FrameNumber = frame
  t.FrameNumberToTimeCode(other)
  Return other
End Function

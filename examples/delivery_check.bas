' Checks movies against what somebody asks for, before they are sent:
'   krz run examples/delivery_check.bas RULES.json MOVIE...
'
' RULES.json, all of it optional:
'   {"picture": {"width": 1920, "height": 1080, "formats": ["avc1"], "rate": 25},
'    "sound": {"tracks": 1, "formats": ["mp4a", "twos"]},
'    "seconds": {"least": 1, "most": 600}}
' Status 1 when a movie breaks a rule. To add a rule, add a class below and a line to ReadRules.
If Args.Count < 2 Then
  StdErr.WriteLine("usage: krz run delivery_check.bas RULES.json MOVIE...")
  Quit(2)
End If
Dim rules() As Rule = ReadRules(Args(0))
Dim broken As Integer
For i As Integer = 1 To Args.LastIndex
  CheckMovie(Args(i))
Next
Print broken, "of", Args.Count - 1, "movies break a rule"
If broken > 0 Then Quit(1)

' What a movie must keep to.
Class Rule
  ' What is wrong with the movie; empty when nothing is.
  Function Problem(m As Movie) As String
    Return ""
  End Function
End Class

Class LengthRule Inherits Rule
  Private least As Double, most As Double    ' seconds

  Sub Constructor(least As Double, most As Double)
    Self.least = least
    Self.most = most
  End Sub

  Function Problem(m As Movie) As String
    Dim seconds As Double = m.Duration / m.TimeScale
    If seconds < least Then Return "it is shorter than " + Str(least) + " seconds"
    If seconds > most Then Return "it is longer than " + Str(most) + " seconds"
    Return ""
  End Function
End Class

Class PictureSizeRule Inherits Rule
  Private width As Integer, height As Integer

  Sub Constructor(width As Integer, height As Integer)
    Self.width = width
    Self.height = height
  End Sub

  Function Problem(m As Movie) As String
    Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1, True)
    If t Is Nil Then Return "it has no picture"
    If t.Width = width And t.Height = height Then Return ""
    Return "the picture is " + Str(t.Width) + "x" + Str(t.Height) + ", not " + Str(width) + "x" + Str(height)
  End Function
End Class

Class RateRule Inherits Rule
  Private rate As Double    ' pictures a second

  Sub Constructor(rate As Double)
    Self.rate = rate
  End Sub

  Function Problem(m As Movie) As String
    Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1, True)
    If t Is Nil Then Return "it has no picture"
    Dim seconds As Double = (t.Duration - t.TimeOffset) / m.TimeScale
    Dim found As Double = t.MediaSampleCount / Max(seconds, 0.001)
    If Abs(found - rate) < 0.02 Then Return ""
    Return "it has " + Format(found, "0.##") + " pictures a second, not " + Str(rate)
  End Function
End Class

' The media of one kind: how many tracks, and which formats they may have.
Class MediaRule Inherits Rule
  Private kind As String, formats() As String, count As Integer

  ' `count` of -1: any number of tracks. No formats: any.
  Sub Constructor(kind As String, formats() As String, count As Integer = -1)
    Self.kind = kind
    Self.formats = formats
    Self.count = count
  End Sub

  Function Problem(m As Movie) As String
    Dim found As Integer
    For i As Integer = 1 To m.TrackCountKRZ
      Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
      If t.MediaType = kind And t.TrackEnabled Then
        found = found + 1
        Dim format As String = FormatOf(t)
        If formats.Count > 0 And formats.IndexOf(format) < 0 Then Return "track " + Str(i) + " has the format " + format
      End If
    Next
    If count >= 0 And found <> count Then Return "it has " + Str(found) + " tracks of " + kind + ", not " + Str(count)
    Return ""
  End Function

  Private Function FormatOf(t As QTTrackKRZ) As String
    Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(1)
    If raw Is Nil Then Return "?"
    Return Trim(raw.StringValue(4, 4))
  End Function
End Class

Function ReadRules(path As String) As Rule()
  Dim text As JSONItem = New JSONItem(TextInputStream.Open(path).ReadAll)
  Dim rules() As Rule
  If text.HasKey("picture") Then
    Dim picture As JSONItem = text.Child("picture")
    If picture.HasKey("width") Then rules.Append New PictureSizeRule(Integer(picture.Value("width")), Integer(picture.Value("height")))
    If picture.HasKey("rate") Then rules.Append New RateRule(Double(picture.Value("rate")))
    rules.Append New MediaRule("vide", Texts(picture, "formats"))
  End If
  If text.HasKey("sound") Then
    Dim sound As JSONItem = text.Child("sound")
    Dim tracks As Integer = -1
    If sound.HasKey("tracks") Then tracks = Integer(sound.Value("tracks"))
    rules.Append New MediaRule("soun", Texts(sound, "formats"), tracks)
  End If
  If text.HasKey("seconds") Then
    Dim seconds As JSONItem = text.Child("seconds")
    rules.Append New LengthRule(Number(seconds, "least", 0), Number(seconds, "most", 1e9))
  End If
  Return rules
End Function

Function Texts(item As JSONItem, name As String) As String()
  Dim list() As String
  If Not item.HasKey(name) Then Return list
  Dim child As JSONItem = item.Child(name)
  For i As Integer = 0 To child.Count - 1
    list.Append String(child.ValueAt(i))
  Next
  Return list
End Function

Function Number(item As JSONItem, name As String, otherwise As Double) As Double
  If item.HasKey(name) Then Return Double(item.Value(name))
  Return otherwise
End Function

Sub CheckMovie(path As String)
  Dim m As Movie = OpenMovie(path)
  Dim problems As Integer
  For Each asked As Rule In rules
    Dim problem As String = asked.Problem(m)
    If problem <> "" Then
      Print path + ":", problem
      problems = problems + 1
    End If
  Next
  If problems = 0 Then Print path + ": good" Else broken = broken + 1
End Sub

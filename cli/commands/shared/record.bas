' A raw sample description as lines of hexadecimal digits, with its fields named.

Const kMostBytes = 4096    ' of what has no name

Class RawRecord
  Private raw As MemoryBlock
  Private mediaType As String
  Private at As Integer        ' the byte that is shown next

  Sub Constructor(raw As MemoryBlock, mediaType As String)
    Self.raw = raw
    Self.mediaType = mediaType
    If Not (raw Is Nil) Then raw.LittleEndian = False
  End Sub

  Sub Show()
    If raw Is Nil Then
      Print "  the record is empty"
      Return
    End If
    Print "  the record, " + Counted(raw.Size, "byte") + ":"
    Field("size", 4, "number")
    Field("data format", 4, "code")
    Field("reserved", 6, "")
    Field("data reference index", 2, "number")
    Select Case mediaType
    Case "vide"
      ShowVideo
    Case "soun"
      ShowSound
    Case "text"
      If Not IsAtom(46) Then ShowText
    Case "tmcd"
      ShowTimeCode
    Case "sprt", "flsh"
      Field("version", 4, "number")
      Field("decompressor type", 4, "code")
      Field("flags", 4, "number")
    Case "qd3d"
      Field("version", 4, "number")
      Field("renderer type", 4, "code")
      Field("decompressor type", 4, "code")
    Case "musi"
      Field("flags", 4, "number")
    End Select
    ShowAtoms
  End Sub

  Private Sub ShowVideo()
    Field("version", 2, "number")
    Field("revision", 2, "number")
    Field("vendor", 4, "code")
    Field("temporal quality", 4, "number")
    Field("spatial quality", 4, "number")
    Field("width", 2, "number")
    Field("height", 2, "number")
    Field("horizontal resolution", 4, "fixed")
    Field("vertical resolution", 4, "fixed")
    Field("data size", 4, "number")
    Field("frame count", 2, "number")
    Field("name", 32, "text")
    Field("depth", 2, "number")
    Field("color table", 2, "number")
  End Sub

  Private Sub ShowSound()
    Dim version As Integer
    If raw.Size >= 18 Then version = raw.Int16Value(16)
    Field("version", 2, "number")
    Field("revision", 2, "number")
    Field("vendor", 4, "code")
    Field("channels", 2, "number")
    Field("sample size", 2, "number")
    Field("compression", 2, "number")
    Field("packet size", 2, "number")
    Field("sample rate", 4, "rate")
    ' In files of other families version 1 has no fields of its own.
    If version = 1 And Not IsAtom(at) Then
      Field("samples a packet", 4, "number")
      Field("bytes a packet", 4, "number")
      Field("bytes a frame", 4, "number")
      Field("bytes a sample", 4, "number")
    ElseIf version = 2 Then
      Field("size of this part", 4, "number")
      Field("sample rate", 8, "double")
      Field("channels", 4, "number")
      Field("reserved", 4, "")
      Field("bits a channel", 4, "number")
      Field("format flags", 4, "number")
      Field("bytes a packet", 4, "number")
      Field("frames a packet", 4, "number")
    End If
  End Sub

  Private Sub ShowText()
    Field("display flags", 4, "number")
    Field("justification", 4, "number")
    Field("background color", 6, "")
    Field("box top", 2, "number")
    Field("box left", 2, "number")
    Field("box bottom", 2, "number")
    Field("box right", 2, "number")
    Field("style start", 4, "number")
    Field("line height", 2, "number")
    Field("ascent", 2, "number")
    Field("font number", 2, "number")
    Field("face", 1, "number")
    Field("filler", 1, "")
    Field("text size", 2, "number")
    Field("text color", 6, "")
    Dim length As Integer
    If at < raw.Size Then length = raw.Byte(at)
    Field("font name", length + 1, "text")
  End Sub

  Private Sub ShowTimeCode()
    Field("reserved", 4, "")
    Field("flags", 4, "number")
    Field("time scale", 4, "number")
    Field("frame duration", 4, "number")
    Field("frames a second", 1, "number")
    Field("filler", 1, "")
  End Sub

  ' Whether an atom that lies inside the record begins there.
  Private Function IsAtom(place As Integer) As Boolean
    If place + 8 > raw.Size Then Return False
    Dim size As Int64 = raw.UInt32Value(place)
    If size < 8 Or size > raw.Size - place Then Return False
    For i As Integer = place + 4 To place + 7
      If raw.Byte(i) < 32 Then Return False
    Next
    Return True
  End Function

  Private Sub ShowAtoms()
    While IsAtom(at)
      Dim finish As Integer = at + Integer(raw.UInt32Value(at))
      Line(8, "atom " + Code(at + 4) + ", " + Counted(finish - at, "byte"))
      Rest(finish)
    Wend
    Rest(raw.Size)
  End Sub

  ' A field and its value; one that is not whole in the record reads as zero.
  Private Sub Field(name As String, size As Integer, form As String)
    If at >= raw.Size Then Return
    If raw.Size - at < size Then
      Line(raw.Size - at, name + " (cut short)")
      Return
    End If
    Line(size, PadRight(name, 24) + ValueText(size, form))
  End Sub

  Private Function ValueText(size As Integer, form As String) As String
    Select Case form
    Case "code"
      Return Code(at)
    Case "fixed"
      Return Str(raw.Int32Value(at) / 65536)
    Case "rate"
      Return Str(raw.UInt32Value(at) / 65536)
    Case "double"
      Return Str(raw.DoubleValue(at))
    Case "text"
      Dim length As Integer = raw.Byte(at)
      If length > size - 1 Then length = size - 1
      Return """" + Text(at + 1, length) + """"
    Case "number"
      If size = 1 Then Return Str(raw.Byte(at))
      If size = 2 Then Return Str(raw.Int16Value(at))
      Return Str(raw.Int32Value(at))
    Else
      Return ""
    End Select
  End Function

  Private Function Text(place As Integer, length As Integer) As String
    Return Printable(ConvertEncoding(DefineEncoding(raw.StringValue(place, length), Encodings.MacRoman), Encodings.UTF8))
  End Function

  Private Function Code(place As Integer) As String
    Return """" + Text(place, 4) + """"
  End Function

  ' The bytes up to `finish`, which have no names.
  Private Sub Rest(finish As Integer)
    Dim shown As Integer
    While at < finish
      If shown >= kMostBytes Then
        Print "         … " + Counted(finish - at, "more byte")
        at = finish
        Return
      End If
      Dim count As Integer = finish - at
      If count > 16 Then count = 16
      Line(count, "")
      shown = shown + count
    Wend
  End Sub

  ' The next `count` bytes, 16 a line, and what they are.
  Private Sub Line(count As Integer, meaning As String)
    Dim finish As Integer = at + count
    Dim note As String = meaning
    While at < finish
      Dim digits As String
      Dim start As Integer = at
      While at < finish And at < start + 16
        digits = digits + Right("0" + Lowercase(Hex(raw.Byte(at))), 2) + " "
        at = at + 1
      Wend
      If note = "" Then
        Print PadLeft(Str(start), 7) + "  " + Trim(digits)
      Else
        Print PadLeft(Str(start), 7) + "  " + PadRight(digits, 48) + "  " + Trim(note)
      End If
      note = ""
    Wend
  End Sub
End Class

' Text from a file, without what a terminal would act on.
Function Printable(text As String) As String
  Dim control As New RegEx("[\x00-\x1f\x7f-\x9f]")
  Return control.ReplaceAll(text, ".")
End Function

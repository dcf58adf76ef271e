' Numbers and bytes anywhere in a file, in both byte orders. Runs in an empty folder.
Dim s As BinaryStream = BinaryStream.Create("data.bin")
For Each little As Boolean In Array(True, False)
  s.LittleEndian = little
  s.WriteInt8(-2)
  s.WriteInt16(-3)
  s.WriteInt32(-4)
  s.WriteInt64(-5)
  s.WriteSingle(0.5)
  s.WriteDouble(0.1)
Next
s.Write("tail")
Print s.Position, s.Length, s.EndOfFile              ' expect: 58 58 True
For Each little As Boolean In Array(True, False)
  s.LittleEndian = little
  If little Then s.Position = 0 Else s.Position = 27
  Print s.ReadInt8, s.ReadInt16, s.ReadInt32, s.ReadInt64, s.ReadSingle, s.ReadDouble
Next
' expect: -2 -3 -4 -5 0.5 0.1
' expect: -2 -3 -4 -5 0.5 0.1
Print s.Read(2), s.Read(100), s.Read(1) = "", s.EndOfFile   ' expect: ta il True True
s.Position = 1 : s.LittleEndian = True
Print s.ReadUInt16, s.ReadUInt32, s.Position         ' expect: 65533 4294967292 7
s.Position = 28 : s.LittleEndian = False
Print s.ReadUInt16                                   ' expect: 65533

' Writing between two reads, and beyond the end.
s.Position = 54
Print s.Read(1)                                      ' expect: t
s.Write("AI")
Print s.Read(5), s.Position                          ' expect: l 58
s.Position = 60
s.WriteInt8(1)
Print s.Length                                       ' expect: 61
s.Position = 54
Print s.Read(4), s.ReadUInt8, s.ReadUInt8, s.ReadUInt8      ' expect: tAIl 0 0 1
Try
  Print s.ReadInt16
Catch e As IOException
  Print e.Message
End Try
' expect: a number of 2 bytes goes beyond the end of the file; ask EndOfFile before
Try
  s.Position = -1
Catch e As OutOfBoundsException
  Print e.Message                                    ' expect: position -1 is before the file begins
End Try
Try
  Print s.Read(-1)
Catch e As OutOfBoundsException
  Print e.Message                                    ' expect: cannot read -1 bytes; ask for 0 to 256 MiB
End Try
s.Close

s = BinaryStream.Open(New FolderItem("data.bin"))
Print s.Length, s.LittleEndian                       ' expect: 61 True
s.WriteInt8(1)
Try
  s.Close
Catch e As IOException
  Print e.Message                                    ' expect: cannot write to "data.bin": Bad file descriptor
End Try
s = BinaryStream.Open("data.bin", True)
s.Write("Z")
s.Close
Print BinaryStream.Open("data.bin").Read(1)          ' expect: Z
s = New BinaryStream
Try
  Print s.Length
Catch e As IOException
  Print e.Message                                    ' expect: the stream is closed; open the file again
End Try

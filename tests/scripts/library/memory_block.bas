' Blocks keep their bytes when they change their size, and refuse what is not inside.
Dim b As New MemoryBlock(4)
b.ColorValue(0) = &cFF8000
Print b.ColorValue(0), b.Byte(0), b.Byte(2)          ' expect: &cFF8000 0 255
b.LittleEndian = False
Print b.ColorValue(0) = &c80FF00, b.Byte(1)          ' expect: True 128
b.Size = 100000
Print b.Byte(1), b.Byte(99999), b.Size               ' expect: 128 0 100000
b.Byte(3) = 9
b.Size = 4
b.Size = 8
Print b.Byte(3), b.Byte(4)                           ' expect: 9 0
b.CString(0) = "abc"
Print b.CString(0), b.StringValue(1, 2)              ' expect: abc bc

Try
  Print b.ColorValue(5)
Catch e As OutOfBoundsException
  Print e.Message
End Try
' expect: 4 bytes at offset 5 are not inside a memory block of 8 bytes
Try
  b.Size = -1
Catch e As OutOfBoundsException
  Print e.Message, b.Size                            ' expect: a memory block's size is negative; give 0 or more 8
End Try

' The largest block is either there or refused; zero bytes cost nothing until they are used.
Dim answer As String
Try
  Dim large As New MemoryBlock(2147483647)
  large.Byte(2147483646) = 1
  answer = "there or refused"
Catch e As OutOfMemoryException
  answer = "there or refused"
End Try
Print answer                                         ' expect: there or refused

' Blocks keep their bytes when they change their size, and refuse what is not inside.
Dim b As New MemoryBlock(4)
b.ColorValue(0) = &cFF8000
Print b.ColorValue(0), b.Byte(0), b.Byte(2)          ' expect: &cFF8000 0 255
b.LittleEndian = False
Print b.ColorValue(0) = &c80FF00, b.Byte(1)          ' expect: True 128
b.Size = 100000
Print b.Byte(1), b.Byte(99999), b.Size               ' expect: 128 0 100000
b.Byte(3) = 9 : b.Size = 4 : b.Size = 8
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

' Numbers of every kind, in both byte orders.
Dim n As New MemoryBlock(16)
For Each little As Boolean In Array(True, False)
  n.LittleEndian = little
  Dim texts() As String
  n.Byte(8) = 300 : texts.Append Str(n.Byte(8)) : n.Int8Value(8) = -1 : texts.Append Str(n.Int8Value(8)) : n.UInt8Value(8) = -1 : texts.Append Str(n.UInt8Value(8))
  n.Int16Value(8) = -2 : texts.Append Str(n.Int16Value(8)) : n.UInt16Value(8) = -2 : texts.Append Str(n.UInt16Value(8))
  n.Int32Value(8) = -3 : texts.Append Str(n.Int32Value(8)) : n.UInt32Value(8) = -3 : texts.Append Str(n.UInt32Value(8))
  n.Int64Value(8) = Int64(-4) : texts.Append Str(n.Int64Value(8)) : n.UInt64Value(8) = Int64(5) : texts.Append Str(n.UInt64Value(8))
  n.SingleValue(8) = 0.5 : texts.Append Str(n.SingleValue(8)) : n.DoubleValue(8) = 0.1 : texts.Append Str(n.DoubleValue(8))
  n.BooleanValue(8) = True : texts.Append Str(n.BooleanValue(8))
  Print Join(texts)     ' expect: 44 -1 255 -2 65534 -3 4294967293 -4 5 0.5 0.1 True
Next                    ' expect: 44 -1 255 -2 65534 -3 4294967293 -4 5 0.5 0.1 True
n.Int32Value(0) = &h01020304
Print n.Byte(0)         ' expect: 1

' Texts keep to their place.
b.StringValue(0, 8) = "abcdefghij"
Print b.StringValue(0, 8)                            ' expect: abcdefgh
b.StringValue(2, 4) = "X"
Print b.Byte(2), b.Byte(3), b.Byte(5), b.StringValue(6, 2)   ' expect: 88 0 0 gh
b.CString(4) = "xyz"
Print b.CString(4)                                   ' expect: xyz
b.StringValue(0, 8) = "12345678"
Print b.CString(6)                                   ' expect: 78
For number As Integer = 1 To 9
  Try
    Select Case number
    Case 1
      Print b.Byte(8)
    Case 2
      Print b.Byte(-1)
    Case 3
      Print b.Int32Value(5)
    Case 4
      Print b.DoubleValue(1)
    Case 5
      Print b.CString(9)
    Case 6
      Print b.StringValue(4, 5)
    Case 7
      Print b.StringValue(4, -1)
    Case 8
      Print b.StringValue(2147483647, 2147483647)
    Case 9
      b.CString(5) = "xyz"
    End Select
    Print "not refused", number
  Catch e As OutOfBoundsException
    If number = 9 Then Print e.Message, b.CString(6)   ' expect: 4 bytes at offset 5 are not inside a memory block of 8 bytes 78
  End Try
Next

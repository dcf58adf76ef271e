' Text written line by line reads back line by line, whatever ends the lines. Runs in an empty folder.
Dim out As TextOutputStream = TextOutputStream.Create("lines.txt")
out.Write("one" & Chr(13) & Chr(10) & "zwei ü" & Chr(10))
out.Write(Chr(13) & "four")
out.Close
Dim text As TextInputStream = TextInputStream.Open("lines.txt")
Dim count As Integer
While Not text.EndOfFile
  count = count + 1
  Print count, "[" + text.ReadLine + "]"
Wend
' expect: 1 [one]
' expect: 2 [zwei ü]
' expect: 3 []
' expect: 4 [four]
Print "[" + text.ReadLine + "]", "[" + text.ReadAll + "]"    ' expect: [] []
text.Close
text.Close
Try
  Print text.ReadLine
Catch e As IOException
  Print e.Message                                             ' expect: the stream is closed; open the file again
End Try

Try
  out = TextOutputStream.Create("lines.txt")
Catch e As IOException
  Print e.Message
End Try
' expect: cannot create "lines.txt": File exists; choose another name, or delete what is there first
out = TextOutputStream.Append(New FolderItem("lines.txt"))
out.WriteLine(" and more")
out = Nil
text = TextInputStream.Open(New FolderItem("lines.txt"))
Print text.ReadLine, Right(text.ReadAll, 10) = "and more" + Chr(10)   ' expect: one False
out = TextOutputStream.Create("lines.txt", True)
out.WriteLine
out.Flush
Print (New FolderItem("lines.txt")).Length                    ' expect: 1

' Other encodings are written as UTF-8, and a mark of UTF-8 in front is no text.
out = TextOutputStream.Create("encoded.txt")
out.Write(Chr(&hFEFF) + ConvertEncoding("für", Encodings.UTF16))
out.Close
Print (New FolderItem("encoded.txt")).Length, TextInputStream.Open("encoded.txt").ReadAll   ' expect: 7 für

' A line that is longer than any buffer, with its end split between two.
Dim long As String
For i As Integer = 1 To 1000
  long = long + "0123456789012345678901234567890123456789012345678901234567890123456789"
Next
out = TextOutputStream.Create("long.txt")
out.Write(Left(long, 65535) + Chr(13) + Chr(10) + long + Chr(10) + "end")
out.Close
text = TextInputStream.Open("long.txt")
Print Len(text.ReadLine), text.ReadLine = long, text.ReadLine, text.EndOfFile   ' expect: 65535 True end True

For Each path As String In Array("missing/x.txt", ".", "")
  Try
    text = TextInputStream.Open(path)
  Catch e As IOException
    Print e.ErrorNumber, e.Message
  End Try
Next
' expect: 2 cannot open "missing/x.txt": No such file or directory; check the path, and that its folder exists
' expect: 21 cannot open ".": Is a directory; give the path of a file, this is a folder
' expect: 0 the path is empty; give the path of a file or folder
Try
  text = TextInputStream.Open(FolderItem(Nil))
Catch e As NilObjectException
  Print e.Message                                             ' expect: the FolderItem is Nil; give a file
End Try
out = TextOutputStream.Append("/dev/full")
out.Write("lost")
Try
  out.Close
Catch e As IOException
  Print e.Message
End Try
' expect: cannot write to "/dev/full": No space left on device; make room on the disk

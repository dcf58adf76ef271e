' What every command says, and how it ends.

' Wrong words on the command line.
Class UsageError Inherits RuntimeException
  Sub Constructor(text As String)
    Self.Message = text
  End Sub
End Class

' Writes "krz: text" to standard error and ends with that status.
Sub Fail(text As String, status As Integer)
  CommandLine.Report(text)
  Quit(status)
End Sub

' A message that names the file, unless it does already.
Function OfFile(path As String, text As String) As String
  If InStr(text, path) > 0 Then Return text
  Return path + ": " + text
End Function

Sub Say(text As String)
  If Not CommandLine.Has("quiet") Then Print text
End Sub

' "1 track", "3 tracks".
Function Counted(count As Int64, noun As String) As String
  If count = 1 Then Return "1 " + noun
  Return Str(count) + " " + noun + "s"
End Function

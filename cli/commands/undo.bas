' krz undo: takes the last save of a movie back.
#Include "messages.bas"

Dim path As String = Args(0)
Try
  Dim count As Integer = UndoCount(path)
  If CommandLine.Has("list") Then
    If count = 0 Then Print "no save can be taken back"
    For i As Integer = 0 To count - 1
      Print PadLeft(Str(i + 1), 3) + "  saved " + DateTime.FromSeconds(UndoTime(path, i)).Local.ToString
    Next
    Quit(0)
  End If
  If count = 0 Then Fail(path + ": no save can be taken back", 1)
  Dim moment As Double = UndoTime(path, 0)
  UndoSave(path)
  Say("took back the save of " + DateTime.FromSeconds(moment).Local.ToString + "; " + Counted(count - 1, "save") + " before it can be taken back")
Catch e As IOException
  Fail(e.Message, 3)
End Try

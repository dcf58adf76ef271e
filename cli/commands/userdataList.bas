' krz userdata list: the items of a list of user data.
#Include "userdata.bas"

Try
  Dim m As Movie = OpenedMovie(Args(0))
  Dim list As JSONItem = UserDataDocuments(ListOf(m))
  If CommandLine.Has("json") Then
    Print list.ToString(True)
    Quit(0)
  End If
  For i As Integer = 0 To list.Count - 1
    Dim item As JSONItem = list.ChildAt(i)
    Dim text As String
    If item.HasName("text") Then text = item.Value("text") Else text = Counted(Integer(item.Value("bytes")), "byte")
    Print "  " + item.Value("type") + PadLeft(Str(Integer(item.Value("index"))), 4) + "  " + text
  Next
Catch e As UsageError
  Fail(e.Message, 2)
End Try

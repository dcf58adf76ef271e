' krz userdata get: one item, as text or as its bytes.
#Include "userdata.bas"

Try
  Dim m As Movie = OpenedMovie(Args(0))
  CheckType(Args(1))
  Dim u As QTUserDataKRZ = ListOf(m)
  Dim bytes As String = u.GetData(Args(1), IndexArgument(2))
  CheckError(u, Args(1) + " number " + Str(IndexArgument(2)))
  If CommandLine.Has("output") Then
    WriteBytes(CommandLine.Value("output"), bytes)
  Else
    Print UserDataText(u, Args(1), IndexArgument(2))
  End If
Catch e As UsageError
  Fail(e.Message, 2)
End Try

' krz userdata add: a text, or the bytes of a file.
#Include "userdata.bas"

Try
  CheckType(Args(1))
  If CommandLine.Has("file") = (Args.Count = 3) Then Raise New UsageError("either TEXT or --file says what to add")
  Dim change As New MovieChange(Args(0))
  Dim u As QTUserDataKRZ = ListOf(change.Target)
  If CommandLine.Has("file") Then
    u.AddData(Args(1), FileBytes(CommandLine.Value("file")))
  Else
    ' Region 21956 is UTF-8 of no particular language, which every reader understands.
    Dim region As Integer = 21956
    If CommandLine.Has("region") Then region = NumberIn(CommandLine.Value("region"), "--region")
    Dim text As String = ConvertEncoding(Args(2), Encodings.UTF8)
    If region < 1024 Then text = ConvertEncoding(Args(2), Encodings.MacRoman)
    u.AddText(Args(1), 1, region, text)
  End If
  CheckError(u, Args(1))
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

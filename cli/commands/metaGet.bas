' krz meta get: the values of a key.
#Include "metadata.bas"

Try
  Dim found As Integer
  For i As Integer = 0 To Args.Ubound - 1
    Dim m As Movie = OpenedMovie(Args(i))
    For Each item As QTMetaDataItemKRZ In Matching(ContainerOf(m), Args(Args.Ubound))
      found = found + 1
      If Not CommandLine.Has("output") Then
        Print ShownValue(item)
      ElseIf found = 1 Then
        WriteBytes(CommandLine.Value("output"), item.GetString)
      End If
    Next
  Next
  If found = 0 Then Fail("no " + Args(Args.Ubound) + " there", 1)
Catch e As UsageError
  Fail(e.Message, 2)
End Try

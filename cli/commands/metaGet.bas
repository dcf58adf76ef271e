' krz meta get: the values of a key.
#Include "metadata.bas"

Try
  Dim found As Integer
  Dim m As Movie = OpenedMovie(Args(0))
  For Each item As QTMetaDataItemKRZ In Matching(ContainerOf(m), Args(1))
    found = found + 1
    If Not CommandLine.Has("output") Then
      Print ShownValue(item)
    ElseIf found = 1 Then
      WriteBytes(CommandLine.Value("output"), item.GetString)
    End If
  Next
  If found = 0 Then Fail(Args(0) + " has no " + Args(1), 1)
Catch e As UsageError
  Fail(e.Message, 2)
End Try

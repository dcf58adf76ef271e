' krz meta export: all items as a JSON array that import takes.
#Include "metadata.bas"

Try
  Dim m As Movie = OpenedMovie(Args(0))
  Dim text As String = WholeDocuments(ContainerOf(m)).ToString(True)
  If CommandLine.Has("output") Then WriteBytes(CommandLine.Value("output"), text + Chr(10)) Else Print text
Catch e As UsageError
  Fail(e.Message, 2)
End Try

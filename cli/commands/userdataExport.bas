' krz userdata export: the whole list, flattened, in a file.
#Include "userdata.bas"

Try
  Dim m As Movie = OpenedMovie(Args(0))
  WriteBytes(Args(1), ListOf(m).BinaryData)
Catch e As UsageError
  Fail(e.Message, 2)
End Try

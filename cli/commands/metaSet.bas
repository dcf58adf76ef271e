' krz meta set: gives keys their values; what is there keeps its place.
#Include "metadata.bas"

Try
  Assign(False)
Catch e As UsageError
  Fail(e.Message, 2)
End Try

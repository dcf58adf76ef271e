' krz meta add: adds values beside those that are there.
#Include "metadata.bas"

Try
  Assign(True)
Catch e As UsageError
  Fail(e.Message, 2)
End Try

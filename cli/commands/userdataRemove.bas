' krz userdata remove: takes one item out.
#Include "userdata.bas"

Try
  CheckType(Args(1))
  Dim change As New MovieChange(Args(0))
  Dim u As QTUserDataKRZ = ListOf(change.Target)
  u.RemoveData(Args(1), IndexArgument(2))
  CheckError(u, Args(1) + " number " + Str(IndexArgument(2)))
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

' krz userdata import: adds the items of a flattened list.
#Include "userdata.bas"

Try
  Dim list As New QTUserDataKRZ
  list.BinaryData = FileBytes(Args(1))
  If list.Lasterror <> 0 Then Fail(Args(1) + " is no flattened list of user data", 3)
  Dim change As New MovieChange(Args(0))
  Dim u As QTUserDataKRZ = ListOf(change.Target)
  Dim added As Integer
  Dim type As String = list.GetNextType("")
  While type <> ""
    For i As Integer = 1 To list.CountType(type)
      Dim bytes As String = list.GetData(type, i)
      If LenB(bytes) = 0 Then Continue
      u.AddData(type, bytes)
      CheckError(u, type)
      added = added + 1
    Next
    type = list.GetNextType(type)
  Wend
  Say(Counted(added, "item") + " added")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

' krz meta remove: takes keys out of every store.
#Include "metadata.bas"

Try
  If Args.Count > 2 And CommandLine.Has("output") Then Raise New UsageError("-o takes one movie; -i changes many")
  For i As Integer = 0 To Args.Ubound - 1
    Dim change As New MovieChange(Args(i))
    Dim d As QTMetaDataKRZ = ContainerOf(change.Target)
    For Each item As QTMetaDataItemKRZ In Matching(d, Args(Args.Ubound))
      d.RemoveItem(item)
    Next
    change.Finish
  Next
Catch e As UsageError
  Fail(e.Message, 2)
End Try

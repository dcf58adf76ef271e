' krz meta remove: takes keys out of every store.
#Include "metadata.bas"

Try
  Dim change As New MovieChange(Args(0))
  Dim d As QTMetaDataKRZ = ContainerOf(change.Target)
  For Each item As QTMetaDataItemKRZ In Matching(d, Args(1))
    d.RemoveItem(item)
  Next
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

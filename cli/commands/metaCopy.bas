' krz meta copy: copies items into another movie, or from store to store of one.
#Include "metadata.bas"

Try
  Dim change As New MovieChange(Args(Args.Ubound))
  Dim source As Movie = change.Target
  If Args.Count > 1 Then source = OpenedMovie(Args(0))
  Dim store As String = StoreOption("from")
  Dim target As String = StoreOption("to")
  If Args.Count = 1 And (store = "" Or target = "") Then Raise New UsageError("from which store to which? --from udta --to mdta")
  Dim d As QTMetaDataKRZ = ContainerOf(change.Target)
  Dim copied As Integer
  For Each item As QTMetaDataItemKRZ In ItemsOf(ContainerOf(source))
    If store <> "" And item.GetPropertyCode("sfmt") <> store Then Continue
    If CopyItem(item, d, target) Then copied = copied + 1
  Next
  Say(Counted(copied, "item") + " copied")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

' False when the item has no key there, or another value stands in its place: those are said.
Function CopyItem(item As QTMetaDataItemKRZ, d As QTMetaDataKRZ, target As String) As Boolean
  Dim storage As String = item.GetPropertyCode("sfmt")
  Dim key As New MetaKey(NameOf(item), storage, ItemKey(item))
  Dim type As Integer = ItemType(item)
  Dim value As String = item.GetString
  If target <> "" And target <> storage Then
    key = Nil
    If NameOf(item) <> ItemKey(item) Then
      For Each one As MetaKey In KeysFor(NameOf(item))
        If one.Storage = target Then key = one
      Next
    End If
    If key Is Nil Then
      CommandLine.Report(NameOf(item) + " has no key in " + target + ": not copied")
      Return False
    End If
    If type = 0 Or key.Key = "trkn" Or key.Key = "tmpo" Then value = EncodedValue(key, ShownValue(item), type)
  End If
  For Each other As QTMetaDataItemKRZ In ItemsOf(d)
    If Not key.Matches(other) Or other.GetPropertyString("loc ") <> item.GetPropertyString("loc ") Then Continue
    If StrComp(ShownValue(other), ShownValue(item), 0) = 0 Then Return False
    If Not CommandLine.Has("replace") Then
      CommandLine.Report("conflict: " + key.Storage + " " + key.Name + " is """ + ShownValue(other) + """ there and """ + ShownValue(item) + """ here: not copied, --replace does")
      Return False
    End If
    d.RemoveItem(other)
  Next
  If key.Storage = "udta" And type = 0 Then Return False
  Dim added As QTMetaDataItemKRZ = key.Add(d, value, type)
  added.SetPropertyString("loc ", item.GetPropertyString("loc "))
  Return True
End Function

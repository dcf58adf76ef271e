' krz meta import: adds the items of a JSON array, as export and list --json print it.
#Include "metadata.bas"

Try
  Dim list As JSONItem
  Try
    list = New JSONItem(DefineEncoding(FileBytes(Args(1)), Encodings.UTF8))
  Catch e As JSONException
    Fail(Args(1) + " is no JSON document: " + e.Message, 3)
  End Try
  Dim change As New MovieChange(Args(0))
  Dim d As QTMetaDataKRZ = ContainerOf(change.Target)
  If CommandLine.Has("replace") Then
    For Each item As QTMetaDataItemKRZ In ItemsOf(d)
      d.RemoveItem(item)
    Next
  End If
  For i As Integer = 0 To list.Count - 1
    ImportItem(list.ChildAt(i), d)
  Next
  Say(Counted(list.Count, "item") + " added")
  change.Finish
Catch e As UsageError
  Fail(e.Message, 2)
End Try

Sub ImportItem(document As JSONItem, d As QTMetaDataKRZ)
  Dim key As New MetaKey(document.Value("key"), document.Value("storageFormat"), document.Value("key"))
  Dim type As Integer = document.Value("dataType")
  Dim value As String
  If document.HasName("base64") Then value = DecodeBase64(document.Value("base64")) Else value = document.Value("value")
  Dim item As QTMetaDataItemKRZ = key.Add(d, value, type)
  If document.HasName("locale") Then item.SetPropertyString("loc ", document.Value("locale"))
End Sub

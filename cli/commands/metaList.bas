' krz meta list: the metadata of movies.
#Include "metadata.bas"

Try
  Dim documents As New JSONItem("[]")
  For Each path As String In Args
    Dim m As Movie = OpenedMovie(path)
    Dim d As QTMetaDataKRZ = ContainerOf(m)
    If CommandLine.Has("json") Then
      If Args.Count = 1 Then Print WholeDocuments(d).ToString(True)
      Dim document As New JSONItem
      document.Value("file") = path
      document.Value("items") = WholeDocuments(d)
      documents.Append document
      Continue
    End If
    Dim store As String = StoreOption("storage")
    For Each item As QTMetaDataItemKRZ In ItemsOf(d)
      If store = "" Or item.GetPropertyCode("sfmt") = store Then PrintItem(item)
    Next
  Next
  If CommandLine.Has("json") And Args.Count > 1 Then Print documents.ToString(True)
Catch e As UsageError
  Fail(e.Message, 2)
End Try
